#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/RawAdmin.h"
#include "support/Shows.h"
#include "sync/ReceiverClient.h"

#include <doctest/doctest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;
using test::RawAdmin;

namespace {

using Cursor = std::optional<std::int64_t>;

std::string jsonAt(std::int64_t index) {
    return encodeJson(LiveState{showWithSongs(2), index, {1.0}});
}

/// A station that knows what it showed.
struct Room {
    SimulatedMainQueue queue;
    SimulatedNetwork network{queue};
    SimulatedComputer& regie = network.addComputer("Régie");
    SimulatedComputer& plateau = network.addComputer("Plateau");
    SimulatedBackground background{queue};
    ReceiverClient station{plateau, queue, background};

    void start() {
        station.start();
        queue.advance(1.0);
    }
    bool isConnected() const { return station.status() == ReceiverStatus::connected; }
    Cursor cursor() const {
        return station.liveState() ? Cursor(station.liveState()->activeSongIndex) : std::nullopt;
    }
};

}  // namespace

TEST_CASE("a station waits for an admin, follows it unasked, and looks for no second one") {
    Room room;
    room.station.start();
    room.station.start();
    room.queue.advance(1000.0);
    CHECK_FALSE(room.isConnected());

    RawAdmin admin(room.regie);
    room.queue.advance(1.0);
    CHECK(room.isConnected());
    CHECK_FALSE(room.cursor());
    CHECK(room.plateau.questionCount() == 1);
    admin.say(jsonAt(4));
    RawAdmin second(room.network.addComputer("Autre régie"));
    room.queue.advance(5.0);
    CHECK(room.cursor() == 4);
    CHECK(second.stations.empty());
    CHECK(admin.stations.size() == 1);
}

TEST_CASE("a message that is no state is passed over") {
    Room room;
    RawAdmin admin(room.regie);
    room.start();
    std::int64_t index = 0;
    LiveState absurd{showWithSongs(2), 0, {1.0}};
    absurd.show.mics.resize(3'000'000);
    for (const std::string& payload :
         {std::string("x"), std::string("{}"), std::string("\xFF\xFE"), jsonAt(1) + jsonAt(1),
          std::string(300'000, ' '), encodeJson(absurd)}) {
        CAPTURE(payload.substr(0, 60));
        admin.say(jsonAt(++index));
        admin.say(payload);
        room.queue.advance(5.0);
        CHECK(room.cursor() == index);
        CHECK(room.isConnected());
    }
}

TEST_CASE("a stream that can't be read keeps its last state until the connection is lost") {
    for (const char* header : {"\0\0\0\0", "\x01\x31\x2D\x00", "\xFF\xFF\xFF\xFF"}) {
        Room room;
        RawAdmin admin(room.regie);
        room.start();
        admin.say(jsonAt(1));
        admin.write(std::string(header, 4));
        for (int i = 0; i < 200; ++i) {
            admin.say(jsonAt(2) + std::string(1000, ' '));
        }
        room.queue.advance(60.0);
        CHECK(room.cursor() == 1);
        CHECK(room.isConnected());

        admin.stations.clear();
        room.queue.advance(0.1);
        CHECK_FALSE(room.cursor());
        CHECK_FALSE(room.isConnected());
    }
}

TEST_CASE("a station that loses its admin shows nothing, and finds it again") {
    Room room;
    auto admin = std::make_unique<RawAdmin>(room.regie);
    room.start();
    admin->say(jsonAt(1));
    room.queue.advance(1.0);
    REQUIRE(room.cursor() == 1);

    SUBCASE("the admin quits and comes back") {
        admin.reset();
        room.queue.advance(30.0);
        CHECK_FALSE(room.isConnected());
        admin = std::make_unique<RawAdmin>(room.regie);
    }
    SUBCASE("the cable is pulled in the middle of a message, the admin advertised all the time") {
        room.plateau.truncateAfter(100);
        admin->say(jsonAt(2));
    }
    room.queue.advance(0.1);
    CHECK_FALSE(room.isConnected());
    CHECK_FALSE(room.cursor());
    room.queue.advance(2.0);
    CHECK(room.isConnected());
    CHECK_FALSE(room.cursor());
    admin->say(jsonAt(3));
    room.queue.advance(1.0);
    CHECK(room.cursor() == 3);
}

TEST_CASE(
    "a long message is read elsewhere: the next waits for it, and a lost connection drops it") {
    struct HeldBackground final : Background {
        void run(std::function<void()> work) override { works.push_back(std::move(work)); }
        std::vector<std::function<void()>> works;
    };
    Room room;
    HeldBackground background;
    ReceiverClient station{room.plateau, room.queue, background};
    auto admin = std::make_unique<RawAdmin>(room.regie);
    station.start();
    room.queue.advance(1.0);
    admin->say(jsonAt(1));
    admin->say(jsonAt(2) + std::string(2'000'000, ' '));
    admin->say(jsonAt(3));
    room.queue.advance(5.0);
    REQUIRE(background.works.size() == 1);
    CHECK(station.liveState()->activeSongIndex == 1);

    SUBCASE("read") {
        background.works.front()();
        CHECK(station.liveState()->activeSongIndex == 1);
        room.queue.advance(1.0);
        CHECK(station.liveState()->activeSongIndex == 3);
    }
    SUBCASE("read when its connection is lost, and another admin leads") {
        admin = std::make_unique<RawAdmin>(room.regie);
        room.queue.advance(5.0);
        admin->say(jsonAt(4));
        room.queue.advance(1.0);
        background.works.front()();
        room.queue.advance(1.0);
        CHECK(station.liveState()->activeSongIndex == 4);
    }
}

TEST_CASE("stopping leaves the admin at once, and starting again finds it") {
    Room room;
    RawAdmin admin(room.regie);
    room.start();
    int losses = 0;
    admin.stations[0]->onStateChange = [&](StreamConnection::State state) {
        losses += state == StreamConnection::State::failed ? 1 : 0;
    };
    admin.say(jsonAt(1));
    room.queue.advance(1.0);
    REQUIRE(room.cursor() == 1);

    admin.say(jsonAt(2));  // on its way when the station stops
    room.station.stop();
    CHECK_FALSE(room.cursor());
    CHECK_FALSE(room.isConnected());
    room.queue.advance(10.0);
    CHECK_FALSE(room.cursor());
    CHECK(losses == 1);
    CHECK(admin.stations.size() == 1);

    room.start();
    CHECK(room.isConnected());
    CHECK(admin.stations.size() == 2);
}

TEST_CASE("whoever watches a station may stop it at any change") {
    for (const auto when : {ReceiverClient::Field::status, ReceiverClient::Field::liveState}) {
        Room room;
        RawAdmin admin(room.regie);
        bool isStopping = false;
        const auto subscription =
            room.station.didChange.subscribe([&](ReceiverClient::Field field) {
                if (field == when && !isStopping) {
                    isStopping = true;
                    room.station.stop();
                }
            });
        room.start();
        if (!admin.stations.empty()) {
            admin.say(jsonAt(1));
        }
        room.queue.advance(5.0);
        CHECK(isStopping);
        CHECK_FALSE(room.isConnected());
        CHECK_FALSE(room.cursor());
    }
}
