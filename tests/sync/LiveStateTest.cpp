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

std::string nested(std::size_t levels) {
    return std::string(levels, '[') + std::string(levels, ']');
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
    const double instants[] = {0.0,
                               0.1,
                               -1.0 / 3.0,
                               817'654'321.123'456'7,
                               Limits::max(),
                               Limits::lowest(),
                               Limits::denorm_min()};
    for (int i = 0; i < 200; ++i) {
        const LiveState sent{
            random.show(), random.integer(), {instants[random.below(std::size(instants))]}};
        const auto received = decodeLiveState(encodeJson(sent));
        REQUIRE(received);
        CHECK(received->show == sent.show);
        CHECK(received->activeSongIndex == sent.activeSongIndex);
        CHECK(received->currentSongStartedAt == sent.currentSongStartedAt);
    }
}

TEST_CASE("a message is a state, or it is dropped whole") {
    struct Case {
        const char* name;
        std::string json;
        bool decodes;
    };
    const std::string good = message(showJson, "0", "1");
    const std::string open = good.substr(0, good.size() - 1);
    const Case cases[] = {
        {"as sent", good, true},
        {"members in another order",
         R"({"currentSongStartedAt":1,"activeSongIndex":0,"show":)" + showJson + "}", true},
        {"one member more", open + R"(,"since":[1]})", true},
        {"a whole number written with a fraction", message(showJson, "2.0", "1e1"), true},
        {"no instant", R"({"show":)" + showJson + R"(,"activeSongIndex":0})", false},
        {"no cursor", R"({"show":)" + showJson + R"(,"currentSongStartedAt":0})", false},
        {"no show", R"({"activeSongIndex":0,"currentSongStartedAt":0})", false},
        {"a null cursor", message(showJson, "null", "1"), false},
        {"a cursor with a fraction", message(showJson, "0.5", "1"), false},
        {"an instant as text", message(showJson, "0", "\"1\""), false},
        {"an instant past every number", message(showJson, "0", "1e400"), false},
        {"a show that is a list", message("[]", "0", "1"), false},
        {"a show without members", message("{}", "0", "1"), false},
        {"the last byte missing", open, false},
        {"two states", good + good, false},
        {"bad UTF-8 in a member that nobody reads", open + ",\"x\":\"\xFF\"}", false},
        {"a thousand levels in a member that nobody reads", open + ",\"x\":" + nested(1000) + "}",
         false},
        {"nothing", "", false},
    };
    for (const Case& row : cases) {
        CAPTURE(row.name);
        CHECK(decodeLiveState(row.json).has_value() == row.decodes);
    }
}
