#include "support/RandomRecords.h"
#include "sync/LiveState.h"

#include <doctest/doctest.h>

#include <iterator>
#include <limits>
#include <string>

using namespace tessivo;

namespace {

const std::string showJson =
    R"({"id":"AAAAAAAA-BBBB-4CCC-8DDD-EEEEEEEEEEEE","name":"Gala","mics":["M1"],"iems":[],)"
    R"("songs":[{"id":"11111111-2222-4333-8444-555555555555","title":"Été","guests":[]}]})";

std::string message(const std::string& show, const std::string& index, const std::string& instant) {
    return R"({"show":)" + show + R"(,"activeSongIndex":)" + index + R"(,"currentSongStartedAt":)" +
           instant + "}";
}

}  // namespace

TEST_CASE("a live state is written as one compact object, its instant counted from 2001") {
    const std::string json = message(showJson, "3", "10");
    const auto state = decodeLiveState(json);
    REQUIRE(state);
    CHECK(state->show.songs.at(0).title == "Été");
    CHECK(state->activeSongIndex == 3);
    CHECK(state->currentSongStartedAt == Instant{10.0});
    CHECK(encodeJson(*state) == json);
}

TEST_CASE("every state comes back as it was sent, to the last bit") {
    test::RandomRecords random(7);
    using Limits = std::numeric_limits<double>;
    const double instants[] = {0.1,           -1.0 / 3.0,       817'654'321.123'456'7,
                               Limits::max(), Limits::lowest(), Limits::denorm_min()};
    for (int i = 0; i < 200; ++i) {
        const LiveState sent{
            random.show(), random.integer(), {instants[random.below(std::size(instants))]}};
        const auto received = decodeLiveState(encodeJson(sent));
        REQUIRE(received);
        CHECK(encodeJson(*received) == encodeJson(sent));
        CHECK(received->currentSongStartedAt == sent.currentSongStartedAt);
    }
}

TEST_CASE("a message is a whole state, or none") {
    const std::string incomplete[] = {
        R"({"show":)" + showJson + R"(,"activeSongIndex":0})",
        R"({"show":)" + showJson + R"(,"currentSongStartedAt":0})",
        R"({"activeSongIndex":0,"currentSongStartedAt":0})",
        message(showJson, "0", "null"),
        message(showJson, "0", "\"1\""),
        message(showJson, "0", "1e400"),
        message(showJson, "0.5", "1"),
        message("{}", "0", "1"),
    };
    for (const std::string& json : incomplete) {
        CAPTURE(json);
        CHECK_FALSE(decodeLiveState(json));
    }
}
