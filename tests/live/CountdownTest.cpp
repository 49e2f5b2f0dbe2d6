#include "live/Countdown.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <limits>

using namespace tessivo;

TEST_CASE("the countdown loses whole seconds only and stops at zero") {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    struct Row {
        std::int64_t duration;
        double elapsed;
        std::int64_t remaining;
    };
    const Row rows[] = {
        {240, 0.0, 240},
        {240, 0.999, 240},
        {240, 10.9, 230},
        {240, 300.0, 0},
        {240, -0.9, 240},
        {240, -3.5, 243},  // this clock is behind that of the admin
        {0, 0.0, 0},
        {-5, 0.0, 0},
        {-5, -100.0, 95},
        {INT64_MAX, -10.0, INT64_MAX},
        {INT64_MIN, 10.0, 0},
        {INT64_MIN, -infinity, 0},
        {INT64_MAX, infinity, INT64_MAX - static_cast<std::int64_t>(9.2e18)},
        {60, std::numeric_limits<double>::quiet_NaN(), 60},
    };
    for (const Row& row : rows) {
        CAPTURE(row.elapsed);
        Show show = showWithSongs(1);
        show.songs[0].duration = row.duration;
        CHECK(remainingSeconds(&show, 0, row.elapsed) == row.remaining);
    }
}

TEST_CASE("only the song under the cursor has a countdown") {
    Show show = showWithSongs(2);
    show.songs[1].duration = 60;
    for (const std::int64_t index :
         {INT64_MIN, std::int64_t{-1}, std::int64_t{0}, std::int64_t{2}, INT64_MAX}) {
        CAPTURE(index);
        CHECK_FALSE(remainingSeconds(&show, index, 0.0).has_value());
    }
    CHECK(remainingSeconds(&show, 1, 0.0) == 60);
    CHECK_FALSE(remainingSeconds(nullptr, 0, 0.0).has_value());
}
