#include "model/ShowJson.h"
#include "sync/LiveState.h"

#include <doctest/doctest.h>

#include <limits>
#include <string>
#include <utility>

using namespace tessivo;

TEST_CASE("a live state is one compact object, its instant counted from 2001, to the last bit") {
    using Limits = std::numeric_limits<double>;
    const std::pair<const char*, double> instants[] = {{"10", 10.0},
                                                       {"-0.3333333333333333", -1.0 / 3.0},
                                                       {"817654321.1234567", 817'654'321.123'456'7},
                                                       {"1.7976931348623157e+308", Limits::max()},
                                                       {"5e-324", Limits::denorm_min()}};
    const Show show;
    for (const auto& [text, instant] : instants) {
        const std::string json = R"({"show":)" + encodeJson(show) +
                                 R"(,"activeSongIndex":-3,"currentSongStartedAt":)" + text + "}";
        CAPTURE(json);
        const auto state = decodeLiveState(json);
        REQUIRE(state);
        CHECK(state->show == show);
        CHECK(state->activeSongIndex == -3);
        CHECK(state->currentSongStartedAt == Instant{instant});
        CHECK(encodeJson(*state) == json);
    }
}

TEST_CASE("a message is a whole state, or none") {
    const std::string show = R"({"show":)" + encodeJson(Show());
    for (const std::string& json :
         {show + R"(,"activeSongIndex":0})", show + R"(,"currentSongStartedAt":0})",
          show + R"(,"activeSongIndex":0,"currentSongStartedAt":null})",
          show + R"(,"activeSongIndex":0,"currentSongStartedAt":1e400})",
          std::string(R"({"activeSongIndex":0,"currentSongStartedAt":0})")}) {
        CAPTURE(json);
        CHECK_FALSE(decodeLiveState(json));
    }
}
