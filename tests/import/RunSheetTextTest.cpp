#include "import/ColumnRole.h"
#include "import/RunSheetText.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace tessivo;

TEST_CASE("lengths are read in the forms that crews write") {
    const std::pair<const char*, std::int64_t> rows[] = {{"00:03:45", 225},
                                                         {"0:03:45:12", 225},
                                                         {"1:02:03", 3723},
                                                         {"3'45", 225},
                                                         {"3'45''", 225},
                                                         {"3'45'12", 225},
                                                         {"225", 225},
                                                         {"-3'45", -135},
                                                         {"-1:00:01", -3599},
                                                         {" \t3'45\u00A0", 225},
                                                         {"\n\n3'45\navec reprise", 225},
                                                         {"::1::2:3:", 3723},
                                                         {"1:x:2:3", 3723},
                                                         {"3'x'45", 225},
                                                         {"2562047788015215:30:07", INT64_MAX},
                                                         {"-2562047788015215:-30:-08", INT64_MIN}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [text, seconds] = row;
        CHECK(parseDuration(text) == seconds);
    }
    // Neither form has its count, or could be hours and minutes; the last are out of range.
    for (const char* text :
         {"1:2'3", "3:45", "1:2:3:4:5", "3'", "1'2'3'4", "3’45", "3 min", "0.15625", "2.25E2", "",
          " \n ", ":", "9223372036854775808", "2562047788015215:30:08", "153722867280912931'0"}) {
        CAPTURE(text);
        CHECK_FALSE(parseDuration(text).has_value());
    }
}

TEST_CASE("timecodes are kept as they are written") {
    const std::pair<const char*, const char*> rows[] = {{"10:00:00:00", "10:00:00:00"},
                                                        {" 1:2:3:4\t", "1:2:3:4"},
                                                        {"00:14:32:00\nnote", "00:14:32:00"},
                                                        {":10:00:00:00:", ":10:00:00:00:"},
                                                        {"99:-1:+7:0", "99:-1:+7:0"}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [text, timecode] = row;
        CHECK(parseLtc(text) == timecode);
    }
    for (const char* text : {"10:00:00;00", "10:00:00", "1:2:3:4:5", "1:2:3:4:x", "1:2:x:4",
                             "1:2:3: 4", "1:2:3:9223372036854775808", "", "note\n00:14:32:00"}) {
        CAPTURE(text);
        CHECK_FALSE(parseLtc(text).has_value());
    }
}

TEST_CASE("guests stand between slashes, plus signs and line breaks") {
    const std::pair<std::string_view, std::vector<std::string>> rows[] = {
        {"Anna + Marc / Léa", {"Anna", "Marc", "Léa"}},
        {"Anna\nMarc, Léa", {"Anna", "Marc, Léa"}},
        {"Anna & Marc", {"Anna & Marc"}},
        {"Anna+Anna", {"Anna", "Anna"}},
        {" /+ \n\t/\u00A0", {}},
        {"", {}},
    };
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [text, names] = row;
        std::vector<std::string> found;
        for (const Guest& guest : splitGuests(text)) {
            found.push_back(guest.name);
            CHECK(guest == Guest{guest.id, guest.name, "", "", std::nullopt});
        }
        CHECK(found == names);
    }
}

TEST_CASE("a role's text leads back to it") {
    for (const ColumnRole role : columnRoles) {
        CHECK(columnRoleFromText(textOf(role)) == role);
    }
    CHECK(columnRoleFromText("Durée") == ColumnRole::duration);
    CHECK_FALSE(columnRoleFromText("durée").has_value());
    CHECK_FALSE(columnRoleFromText("").has_value());
}
