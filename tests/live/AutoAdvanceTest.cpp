#include "live/AutoAdvance.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <vector>

using namespace tessivo;

namespace {

Show showWithTimecodes(const std::vector<const char*>& timecodes) {
    Show show = showWithSongs(timecodes.size());
    for (std::size_t i = 0; i < timecodes.size(); ++i) {
        if (timecodes[i]) {
            show.songs[i].ltcTimecode = timecodes[i];
        }
    }
    return show;
}

}  // namespace

TEST_CASE("the first other song whose first second holds the frame is triggered") {
    struct Row {
        std::vector<const char*> timecodes;
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
        {{nullptr, "", "xx", "00:00:02:00"}, 0, 50, 3},
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
        CAPTURE(row.timecodes.front());
        CAPTURE(row.frame);
        CHECK(songTriggeredBy(showWithTimecodes(row.timecodes), row.current, row.frame, 25) ==
              row.triggered);
    }
}
