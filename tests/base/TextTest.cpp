#include "base/Text.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

using namespace tessivo;

TEST_CASE("UTF-8 is recognised at the ends of every range") {
    for (const std::string_view text :
         {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBF", "é", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        CAPTURE(text);
        CHECK(isValidUtf8(text));
    }
    CHECK(isValidUtf8(std::string_view("\0", 1)));
    for (const std::string_view text :
         {"\x80", "\xC1\xBF", "\xC2", "\xC2\x7F", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xEF\xBF",
          "\xE1\x80\xC0", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
          "\xF1\x80\x80"}) {
        CAPTURE(text);
        CHECK_FALSE(isValidUtf8(text));
    }
}

TEST_CASE("trimming takes spaces of every width from the ends, and line breaks when asked") {
    CHECK(trimSpaces(" \t\u00A0\u202Fa \u3000b\u2009 ") == "a \u3000b");
    CHECK(trimSpaces(" \n a \r ") == "\n a \r");
    CHECK(trimSpaces(" \u2003 ").empty());
    CHECK(trimSpacesAndLineBreaks("\r\n \u2028 a\nb \u0085\v\f\u2029\n") == "a\nb");
    CHECK(trimSpacesAndLineBreaks("\n\u00A0\n").empty());
}

TEST_CASE("integers are a sign and digits, nothing else") {
    const std::pair<const char*, std::int64_t> rows[] = {{"0", 0},
                                                         {"007", 7},
                                                         {"+7", 7},
                                                         {"-7", -7},
                                                         {"9223372036854775807", INT64_MAX},
                                                         {"-9223372036854775808", INT64_MIN}};
    for (const auto& [text, value] : rows) {
        CHECK(readInteger(text) == value);
    }
    for (const char* text : {"", "+", "-", "+-7", "--7", " 7", "7 ", "7.0", "0x7", "٧", "7e1",
                             "9223372036854775808", "-9223372036854775809"}) {
        CAPTURE(text);
        CHECK_FALSE(readInteger(text).has_value());
    }
}

TEST_CASE("pieces between separators are never empty, and integers are picked from them") {
    CHECK(split("/a+b//\n c/", "/+\n") == std::vector<std::string_view>{"a", "b", " c"});
    CHECK(split("::", ":").empty());
    CHECK(split("", ":").empty());
    CHECK(integersBetween(":1:x:-2:+3: 4:", ":") == std::vector<std::int64_t>{1, -2, 3});
}
