#include "import/ColumnRole.h"
#include "import/Notations.h"
#include "import/RunSheetText.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
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

TEST_CASE("what a person would read is told by its notation, and never guessed") {
    struct Row {
        const char* text;
        std::optional<Notation> notation;
        const char* reading;
    };
    const auto check = [](const Row& row, const std::optional<Reading>& reading) {
        CAPTURE(row.text);
        REQUIRE(reading.has_value() == row.notation.has_value());
        CHECK((!reading || (reading->notation == *row.notation && reading->text == row.reading)));
    };
    constexpr std::optional<Notation> none;
    const Row lengths[] = {
        {"3:45", Notation::minutesAndSeconds, "3:45"},
        {" 03:45\nreprise", Notation::minutesAndSeconds, "3:45"},
        {"3:60", none, ""},
        {"3:5", none, ""},
        {"3:45:00:00:1", none, ""},
        {"3'45\"", Notation::signs, "3:45"},
        {"3’45", Notation::signs, "3:45"},
        {"3′45″", Notation::signs, "3:45"},
        {"4'", Notation::signs, "4:00"},
        {"3 min 45", Notation::units, "3:45"},
        {"3\u00A0MIN\u00A045", Notation::units, "3:45"},
        {"3m45s", Notation::units, "3:45"},
        {"225 s", Notation::units, "3:45"},
        {"1 h 02", Notation::units, "62:00"},
        {"1h2min3s", Notation::units, "62:03"},
        {"3 min 60", none, ""},
        {"45 s 3 min", none, ""},
        {"3 mesures", none, ""},
        {"min", none, ""},
        {"99999 s", none, ""},
        {"0.0026041666666666665", Notation::lengthInDays, "3:45"},
        {"2.6041666666666665E-3", Notation::lengthInDays, "3:45"},
        {"0.00260416666666667", Notation::lengthInDays, "3:45"},
        {"0.15625", none, ""},  // 3:45:00, or 3:45 typed into cells for hours and minutes
        {"0.5", none, ""},
        {"0.0026", none, ""},
        {"225.0", none, ""},
        {"nan", none, ""},
        {"4,30", none, ""},
        {"4.30", none, ""},
        {"≈ 3'40", none, ""},
        {"", none, ""}};
    for (const Row& row : lengths) {
        check(row, likelyDuration(row.text));
    }
    const Row timecodes[] = {{"10:00:00;00", Notation::frameSeparator, "10:00:00:00"},
                             {"1:02:03.04", Notation::frameSeparator, "01:02:03:04"},
                             {"10:00:00", Notation::withoutFrames, "10:00:00:00"},
                             {"TC 01:00:00:00", Notation::marked, "01:00:00:00"},
                             {"LTC: 01:00:00;00", Notation::marked, "01:00:00:00"},
                             {"01:00:00:00 (TC)", Notation::marked, "01:00:00:00"},
                             {"01:00:00:00 TC", Notation::marked, "01:00:00:00"},
                             {"0.4166666666666667", Notation::timeOfDay, "10:00:00:00"},
                             {"24:00:00;00", none, ""},
                             {"10:00:60", none, ""},
                             {"10:00:00.030", none, ""},
                             {"10.00.00", none, ""},
                             {"10:00", none, ""},
                             {"TC", none, ""},
                             {"à caler", none, ""}};
    for (const Row& row : timecodes) {
        check(row, likelyTimecode(row.text));
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
