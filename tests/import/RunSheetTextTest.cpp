#include "import/ColumnRole.h"
#include "import/RunSheetText.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace tessivo;

TEST_CASE("lengths are read in the forms that crews write") {
    struct Row {
        std::string_view text;
        std::optional<std::int64_t> seconds;
    };
    const Row rows[] = {
        {"00:03:45", 225},
        {"0:03:45:12", 225},
        {"1:02:03", 3723},
        {"3'45", 225},
        {"3'45''", 225},
        {"3'45'12", 225},
        {"225", 225},
        {"+225", 225},
        {"-3'45", -135},
        {"-1:00:01", -3599},
        {" \t3'45\u00A0", 225},
        {"\n\n3'45\navec reprise", 225},
        {"::1::2:3:", 3723},
        {"1:x:2:3", 3723},
        {"3'x'45", 225},
        {"1:2'3", std::nullopt},  // neither form has its count
        {"3:45", std::nullopt},   // could be hours and minutes
        {"1:2:3:4:5", std::nullopt},
        {"3'", std::nullopt},
        {"1'2'3'4", std::nullopt},
        {"3’45", std::nullopt},
        {"3 min", std::nullopt},
        {"0.15625", std::nullopt},
        {"2.25E2", std::nullopt},
        {"", std::nullopt},
        {" \n ", std::nullopt},
        {"\n\n", std::nullopt},
        {":", std::nullopt},
        {"9223372036854775807", INT64_MAX},
        {"9223372036854775808", std::nullopt},
        {"2562047788015215:30:07", INT64_MAX},
        {"2562047788015215:30:08", std::nullopt},
        {"-2562047788015215:-30:-08", INT64_MIN},
        {"153722867280912931'0", std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(parseDuration(row.text) == row.seconds);
    }
}

TEST_CASE("timecodes are kept as they are written") {
    struct Row {
        std::string_view text;
        std::optional<std::string> timecode;
    };
    const Row rows[] = {
        {"10:00:00:00", "10:00:00:00"},
        {" 1:2:3:4\t", "1:2:3:4"},
        {"00:14:32:00\nnote", "00:14:32:00"},
        {":10:00:00:00:", ":10:00:00:00:"},
        {"99:-1:+7:0", "99:-1:+7:0"},
        {"10:00:00;00", std::nullopt},
        {"10:00:00", std::nullopt},
        {"1:2:3:4:5", std::nullopt},
        {"1:2:3:4:x", std::nullopt},
        {"1:2:x:4", std::nullopt},
        {"1:2:3: 4", std::nullopt},
        {"1:2:3:9223372036854775808", std::nullopt},
        {"", std::nullopt},
        {"note\n00:14:32:00", std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(parseLtc(row.text) == row.timecode);
    }
}

TEST_CASE("guests stand between slashes, plus signs and line breaks") {
    struct Row {
        std::string_view text;
        std::vector<std::string> names;
    };
    const Row rows[] = {
        {"Anna + Marc / Léa", {"Anna", "Marc", "Léa"}},
        {"Anna\nMarc, Léa", {"Anna", "Marc, Léa"}},
        {"Anna & Marc", {"Anna & Marc"}},
        {"Anna+Anna", {"Anna", "Anna"}},
        {" /+ \n\t/\u00A0", {}},
        {"", {}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        std::vector<std::string> names;
        for (const Guest& guest : splitGuests(row.text)) {
            names.push_back(guest.name);
            CHECK(guest.mic.empty());
            CHECK(guest.iem.empty());
            CHECK_FALSE(guest.volume.has_value());
        }
        CHECK(names == row.names);
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
