#include "live/StartTimecode.h"

#include <doctest/doctest.h>

using tessivo::timecodeToFrames;

TEST_CASE("a start timecode is four integers between colons, whatever else is there") {
    struct Row {
        const char* text;
        std::int64_t fps;
        std::optional<std::int64_t> frames;
    };
    const Row rows[] = {
        {"10:00:00:00", 25, 900000},
        {"1:2:3:4", 25, 93079},
        {"01:02:03:04", 25, 93079},
        {"::01:02:03:04:", 25, 93079},
        {"01:02:xx:03:04", 25, 93079},
        {"01:02:99999999999999999999:03:04", 25, 93079},
        {"+1:+02:3:4", 25, 93079},
        {"00:00:00:30", 25, 30},
        {"00:99:99:99", 25, (99 * 60 + 99) * 25 + 99},
        {"00:00:-1:00", 25, -25},
        {"10:00:00:00", 30, 1080000},
        {"", 25, std::nullopt},
        {":::", 25, std::nullopt},
        {"01:02:03", 25, std::nullopt},
        {"01:02:03:04:05", 25, std::nullopt},
        {" 01:02:03:04", 25, std::nullopt},
        {"01:02:03:04 ", 25, std::nullopt},
        {"01;02;03;04", 25, std::nullopt},
        {"01:02:03;04", 25, std::nullopt},
        {"+-1:2:3:4", 25, std::nullopt},
        {"+:2:3:4", 25, std::nullopt},
        {"0x1:2:3:4", 25, std::nullopt},
        {"9223372036854775807:0:0:0", 25, std::nullopt},
        {"-9223372036854775808:0:0:0", 25, std::nullopt},
        {"0:0:0:9223372036854775807", 25, INT64_MAX},
        {"0:0:1:9223372036854775807", 25, std::nullopt},
        {"0:0:0:-9223372036854775808", 25, INT64_MIN},
        {"0:0:0:-9223372036854775809", 25, std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(row.text);
        CHECK(timecodeToFrames(row.text, row.fps) == row.frames);
    }
}
