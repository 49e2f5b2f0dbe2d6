#include "live/Setlist.h"
#include "live/SongText.h"
#include "live/StartTimecode.h"

#include <doctest/doctest.h>

#include <utility>

using namespace tessivo;

TEST_CASE("a typed timecode is its last eight digits, aligned to the frames") {
    const std::pair<const char*, const char*> rows[] = {
        {"00143200", "00:14:32:00"},
        {"143200", "00:14:32:00"},
        {"1", "00:00:00:01"},
        {"14:32", "00:00:14:32"},
        {"10:00:00:00", "10:00:00:00"},
        {"10.00.05.12", "10:00:05:12"},
        {"  10 h 00 m 05 s 12 ", "10:00:05:12"},
        {"123456789", "23:45:67:89"},
        {"99999999", "99:99:99:99"},
        {"-1", "00:00:00:01"},
        {"000000000000", "00:00:00:00"},
        {"１2", "00:00:00:02"},
    };
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [typed, kept] = row;
        const auto stored = normalizeLtcInput(typed);
        REQUIRE(stored == kept);
        CHECK(normalizeLtcInput(*stored) == stored);
        CHECK(timecodeToFrames(*stored, 25).has_value());
    }
    for (const char* typed : {"", " \t\u00A0", "--:--:--:--", "aucun"}) {
        CHECK_FALSE(normalizeLtcInput(typed).has_value());
    }
}

TEST_CASE("a typed length is minutes and seconds, or seconds, and is shown as the former") {
    struct Row {
        const char* typed;
        std::int64_t seconds;
        const char* shown;
    };
    const Row rows[] = {
        {"3:45", 225, "3:45"},
        {"225", 225, "3:45"},
        {" 90\t", 90, "1:30"},
        {"3:75", 255, "4:15"},
        {"3:45:", 225, "3:45"},
        {"::3::45::", 225, "3:45"},
        {"x:3:45", 225, "3:45"},
        {"62:05", 3725, "62:05"},
        {"3600", 3600, "60:00"},
        {"0", 0, "0:00"},
        {"59", 59, "0:59"},
        {"+3:+5", 185, "3:05"},
        {"-75", -75, "-1:-15"},
        {"-1:-15", -75, "-1:-15"},
        {"9223372036854775807", INT64_MAX, "153722867280912930:07"},
        {"153722867280912930:07", INT64_MAX, "153722867280912930:07"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.typed);
        const auto seconds = parseDurationInput(row.typed);
        REQUIRE(seconds == row.seconds);
        CHECK(minutesAndSeconds(*seconds) == row.shown);
        CHECK(parseDurationInput(row.shown) == seconds);
    }
    for (const char* typed :
         {"3: 45", "1:02:03", ":", "3:", "", "   ", "3m45", "3.5", "3:45\n", "9223372036854775808",
          "153722867280912930:08", "153722867280912931:00"}) {
        CAPTURE(typed);
        CHECK_FALSE(parseDurationInput(typed).has_value());
    }
}
