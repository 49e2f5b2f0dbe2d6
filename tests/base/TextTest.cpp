#include "base/Text.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <vector>

using namespace tessivo;

TEST_CASE("trimming takes spaces of every width from the ends, and line breaks when asked") {
    CHECK(trimSpaces(" \t\u00A0\u202Fa \u3000b\u2009 ") == "a \u3000b");
    CHECK(trimSpaces(" \n a \r ") == "\n a \r");
    CHECK(trimSpaces(" \u2003 ").empty());
    CHECK(trimSpacesAndLineBreaks("\r\n \u2028 a\nb \u0085\v\f\u2029\n") == "a\nb");
    CHECK(trimSpacesAndLineBreaks("\n\u00A0\n").empty());
}

TEST_CASE("integers are a sign and digits within 64 bits, also between separators") {
    CHECK(readInteger("+007") == 7);
    CHECK(readInteger("9223372036854775807") == INT64_MAX);
    CHECK(readInteger("-9223372036854775808") == INT64_MIN);
    for (const char* text : {"", "+", "+-7", "--7", " 7", "7 ", "7.0", "9223372036854775808"}) {
        CAPTURE(text);
        CHECK_FALSE(readInteger(text).has_value());
    }
    CHECK(integersBetween(":1::x/-2:+3: 4:", ":/") == std::vector<std::int64_t>{1, -2, 3});
}
