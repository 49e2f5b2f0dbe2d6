#include "live/AutoAdvance.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <optional>
#include <string>
#include <vector>

using namespace tessivo;

TEST_CASE("the first other song whose first second holds the frame is triggered") {
    struct Row {
        std::vector<std::optional<std::string>> timecodes;
        std::int64_t current;
        std::int64_t frame;
        std::optional<std::size_t> triggered;
    };
    const Row rows[] = {
        {{"00:01:00:00"}, 7, 1499, std::nullopt},
        {{"00:01:00:00"}, 7, 1500, 0},
        {{"00:01:00:00"}, 7, 1524, 0},
        {{"00:01:00:00"}, 7, 1525, std::nullopt},
        {{"00:01:00:00"}, 0, 1500, std::nullopt},
        {{std::nullopt, "", "xx", "00:00:02:00"}, 0, 50, 3},
        {{"00:00:01:00", "00:00:02:00", "00:00:03:00"}, 2, 30, 0},
        {{"00:00:01:00", "00:00:01:00"}, 0, 25, 1},
        {{"00:00:01:00", "00:00:01:00"}, 1, 25, 0},
        {{"00:00:01:00", "00:00:01:00"}, -1, 25, 0},
        // Distances beyond the signed range don't wrap into a match.
        {{"0:0:0:-9223372036854775808"}, 7, INT64_MAX, std::nullopt},
        {{"0:0:0:9223372036854775807"}, 7, INT64_MAX, 0},
        {{"0:0:0:9223372036854775800"}, 7, INT64_MIN, std::nullopt},
    };
    for (const Row& row : rows) {
        CAPTURE(&row - rows);
        Show show = showWithSongs(row.timecodes.size());
        for (std::size_t i = 0; i < show.songs.size(); ++i) {
            show.songs[i].ltcTimecode = row.timecodes[i];
        }
        CHECK(songTriggeredBy(show, row.current, row.frame, 25) == row.triggered);
    }
}

TEST_CASE("the song that plays is the first with the latest start, until its length is over") {
    Show show = showWithSongs(3);
    for (Song& song : show.songs) {
        song.ltcTimecode = &song == &show.songs[2] ? "00:00:01:00" : "00:00:02:00";
        song.duration = 10;
    }
    const std::pair<std::int64_t, std::optional<std::size_t>> rows[] = {
        {24, std::nullopt}, {25, 2}, {49, 2}, {50, 0}, {299, 0}, {300, std::nullopt}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto playing = songPlayingAt(show, row.first, 25);
        CHECK((playing ? std::optional(playing->song) : std::nullopt) == row.second);
    }
}
