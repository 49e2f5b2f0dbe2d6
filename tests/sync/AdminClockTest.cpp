#include "sync/AdminClock.h"

#include <doctest/doctest.h>

using namespace tessivo;

// The admin's clock is 1000 s ahead of the station's moments until somebody sets it.
TEST_CASE("a station learns the admin's clock from the least late start") {
    struct Heard {
        const char* what;
        double at;
        double startedAt;
        double lead;              // learnt then; 0 for none
        bool reconnects = false;  // before that
    };
    static constexpr Heard rows[] = {
        {"a song that may be old", 10.0, 700.0, 0.0},
        {"the same again", 11.0, 700.0, 0.0},
        {"a start, a little late", 12.3, 1012.0, 999.7},
        {"one that is less late", 13.0, 1012.9, 999.9},
        {"one that is later than the best", 14.0, 1013.5, 999.9},
        {"after a pause, which may have held it back", 18.0, 1014.5, 999.9},
        {"and with it what came meanwhile", 18.1, 1016.0, 999.9},
        {"as before", 19.0, 1016.0, 999.9},
        {"somebody has set the clock back an hour", 20.0, -2580.2, -2600.2},
        {"and forward again", 21.0, 1020.9, 999.9},
        {"back with the admin, where a song began meanwhile", 22.5, 1021.0, 999.9, true},
        {"after a pause", 25.0, 1021.0, 999.9},
        {"back with the admin once more", 25.1, 1021.0, 999.9, true},
        {"whose clock is set back now", 25.6, -2574.4, -2600.0},
        {"and forward", 27.0, 1026.9, 999.9}};
    AdminClock clock;
    for (const Heard& row : rows) {
        CAPTURE(row.what);
        if (row.reconnects) {
            clock.reconnect();
        }
        clock.hear({row.startedAt}, {row.at});
        const auto time = clock.at({row.at});
        REQUIRE(time.has_value() == (row.lead != 0.0));
        if (time) {
            CHECK(time->secondsSince2001 - row.at == doctest::Approx(row.lead));
        }
    }
    // An hour of songs that arrive at once, from an admin whose clock loses time.
    for (double at = 28.0; at < 3600.0; at += 1.0) {
        clock.hear({(1.0 - 5e-5) * at + 1000.0}, {at});
    }
    CHECK(clock.at({3600.0})->secondsSince2001 == doctest::Approx(4599.82));
}
