#include "live/StartTimecode.h"

#include <doctest/doctest.h>

using tessivo::timecodeToFrames;

TEST_CASE("a start timecode is four integers between colons, whatever else is there") {
    struct Row {
        const char* text;
        std::int64_t fps;
        std::int64_t frames;
    };
    const Row rows[] = {
        {"10:00:00:00", 25, 900000},
        {"10:00:00:00", 30, 1080000},
        {"1:2:3:4", 25, 93079},
        {"::01:02:03:04:", 25, 93079},
        {"01:02:xx:03:04", 25, 93079},
        {"01:02:99999999999999999999:03:04", 25, 93079},
        {"+1:+02:3:4", 25, 93079},
        {"00:00:00:30", 25, 30},
        {"00:99:99:99", 25, (99 * 60 + 99) * 25 + 99},
        {"00:00:-1:00", 25, -25},
        {"0:0:0:9223372036854775807", 25, INT64_MAX},
        {"0:0:0:-9223372036854775808", 25, INT64_MIN},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(timecodeToFrames(row.text, row.fps) == row.frames);
    }
    for (const char* text : {"", ":::", "01:02:03", "01:02:03:04:05", " 01:02:03:04",
                             "01:02:03:04 ", "01;02;03;04", "01:02:03;04", "+-1:2:3:4", "+:2:3:4",
                             "0x1:2:3:4", "9223372036854775807:0:0:0", "-9223372036854775808:0:0:0",
                             "0:0:1:9223372036854775807", "0:0:0:-9223372036854775809"}) {
        CAPTURE(text);
        CHECK_FALSE(timecodeToFrames(text, 25).has_value());
    }
}
