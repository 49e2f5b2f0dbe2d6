#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/RawAdmin.h"
#include "support/Shows.h"
#include "sync/AdminBroadcaster.h"
#include "sync/ReceiverClient.h"
#include "sync/StationJournal.h"

#include <doctest/doctest.h>

#include <memory>
#include <string>
#include <vector>

using namespace tessivo;
using Kind = AdminNetworkStatus::Kind;

namespace {

/// An admin's computer and a station's, on one network in virtual time.
struct Room {
    SimulatedMainQueue queue;
    SimulatedNetwork network{queue};
    SimulatedComputer& computer = network.addComputer("Régie");
    SimulatedComputer& other = network.addComputer("Plateau");
    SimulatedBackground background{queue};
    AdminBroadcaster broadcaster{computer, queue};

    void broadcast() {
        broadcaster.startChecking();
        queue.advance(2.0);
        REQUIRE(broadcaster.status().kind == Kind::broadcasting);
    }
};

LiveState stateAt(std::int64_t index) {
    return {showWithSongs(3), index, {800'000'000.25}};
}

}  // namespace

TEST_CASE("an admin alone on the network broadcasts after a second and a half, once asked to") {
    Room room;
    room.queue.advance(5.0);
    CHECK(room.broadcaster.status().kind == Kind::checking);
    for (const double pause : {0.0, 1.49, 0.02}) {
        CHECK(room.broadcaster.status().kind == Kind::checking);
        room.broadcaster.startChecking();  // asking again changes nothing
        room.queue.advance(pause);
    }
    room.broadcaster.startChecking();
    CHECK(room.broadcaster.status().kind == Kind::broadcasting);
}

TEST_CASE("who else advertises during the check decides its outcome") {
    struct Case {
        const char* description;
        double arrives;  // seconds after the check started
        double leaves;
        bool losesPower;  // by that
        double decided;
        AdminNetworkStatus expected;
    };
    const Case cases[] = {
        {"it was there before", 0.0, 10.0, false, 0.5, {Kind::conflict, "Autre régie"}},
        {"it shows up during the check", 1.0, 10.0, false, 1.5, {Kind::conflict, "Autre régie"}},
        {"it shows up and leaves again", 0.5, 1.0, false, 1.0, {Kind::conflict, "Autre régie"}},
        {"only its record is left", 0.0, 0.01, true, 1.6, {Kind::broadcasting, {}}},
        {"only its record shows up", 1.0, 1.05, true, 2.3, {Kind::broadcasting, {}}},
        {"it shows up too late", 1.4, 10.0, false, 1.6, {Kind::broadcasting, {}}},
    };
    for (const Case& row : cases) {
        CAPTURE(row.description);
        Room room;
        auto& computer = room.network.addComputer("Autre régie");
        auto listener = computer.makeListener(AdminBroadcaster::serviceType);
        const auto printer = room.other.makeListener("_printer._tcp");
        printer->start();
        room.queue.postAfter(row.arrives, [&] { listener->start(); });
        room.queue.postAfter(row.leaves, [&] {
            if (row.losesPower) {
                computer.losePower();
            }
            listener.reset();
        });
        const auto late = room.other.makeListener(AdminBroadcaster::serviceType);
        room.queue.postAfter(1.6, [&] { late->start(); });  // a rival, whatever is awaited yet
        room.broadcaster.startChecking();
        room.queue.advance(row.decided);
        CHECK(room.broadcaster.status() == row.expected);
        room.queue.advance(9.0);
        CHECK(room.broadcaster.status() == row.expected);
    }
}

TEST_CASE("over a slow cable, who answers late is heard each time, and who has left isn't") {
    constexpr double latency = 0.2;
    struct Case {
        double arrives;
        double stays;
        AdminNetworkStatus expected;
    };
    const Case cases[] = {
        {1.1, 10.0, {Kind::conflict, "Plateau"}},
        {0.5, SimulatedNetwork::discoveryDelay + latency, {Kind::broadcasting, {}}},  // as called
    };
    for (const Case& row : cases) {
        Room room;
        room.computer.setLatency(latency);
        auto listener = room.other.makeListener(AdminBroadcaster::serviceType);
        room.queue.postAfter(row.arrives, [&] {
            listener->start();
            room.queue.postAfter(row.stays, [&] { listener.reset(); });
        });
        for (int check = 0; check < 2; ++check) {
            room.broadcaster.startChecking();
            room.queue.advance(3.0);
            CHECK(room.broadcaster.status() == row.expected);
        }
    }
}

TEST_CASE("a computer that says it has the service leads, also when nobody takes the call there") {
    Room room;
    room.computer.setLatency(0.45);
    auto listener = room.other.makeListener(AdminBroadcaster::serviceType);
    listener->start();
    room.queue.postAfter(1.03, [&] { listener.reset(); });  // heard of at 1.63, refused at 1.5
    room.broadcaster.startChecking();
    room.queue.advance(3.0);
    CHECK(room.broadcaster.status() == AdminNetworkStatus{Kind::conflict, "Plateau"});
}

TEST_CASE("a check after a conflict runs its whole time, whatever is left of the one before") {
    Room room;
    auto listener = room.other.makeListener(AdminBroadcaster::serviceType);
    listener->start();
    room.broadcaster.startChecking();
    room.queue.advance(0.5);
    REQUIRE(room.broadcaster.status().kind == Kind::conflict);
    listener.reset();
    room.queue.advance(0.5);
    room.broadcaster.startChecking();
    room.queue.advance(1.4);
    CHECK(room.broadcaster.status().kind == Kind::checking);
    room.queue.advance(0.2);
    CHECK(room.broadcaster.status().kind == Kind::broadcasting);
}

TEST_CASE("a rival is told when it comes and when it goes, and what it says is taken in") {
    Room room;
    room.broadcast();
    int told = 0;
    const auto subscription =
        room.broadcaster.didChange.subscribe([&](AdminBroadcaster::Field field) {
            told += field == AdminBroadcaster::Field::rival ? 1 : 0;
        });
    auto rival = std::make_unique<test::RawAdmin>(room.other);
    room.queue.advance(1.0);
    CHECK(room.broadcaster.rival() == "Plateau");
    CHECK(told == 1);
    const auto said = std::make_shared<const std::string>(2'000'000, ' ');
    rival->stations.back()->send(said);
    room.queue.advance(1.0);
    CHECK(said.use_count() == 1);  // all of it has left, so that nobody takes the cable for pulled
    rival.reset();
    room.queue.advance(1.0);
    CHECK(room.broadcaster.rival().empty());
    CHECK(told == 2);
}

TEST_CASE("without a port there is no broadcast, and the operator is told why") {
    Room room;
    room.computer.setOutOfPorts(true);
    room.broadcaster.startChecking();
    room.queue.advance(2.0);
    CHECK(room.broadcaster.status() ==
          AdminNetworkStatus{Kind::conflict, "erreur réseau — impossible d'ouvrir le service"});
}

TEST_CASE("a broadcaster that goes during its check never broadcasts") {
    Room room;
    auto brief = std::make_unique<AdminBroadcaster>(room.computer, room.queue);
    brief->startChecking();
    room.queue.advance(1.0);
    brief.reset();
    ReceiverClient station(room.other, room.queue, room.background);
    station.start();
    room.queue.advance(2.0);
    CHECK(station.status() == ReceiverStatus::searching);
}

TEST_CASE("a station has the latest state as soon as it is connected, then every later one") {
    Room room;
    SimulatedJournal journal;
    const StationJournal stations(room.broadcaster, room.queue, journal);
    room.broadcast();
    room.broadcaster.update(stateAt(5));
    room.broadcaster.update(stateAt(0));
    ReceiverClient station(room.other, room.queue, room.background);
    std::vector<std::int64_t> told;
    auto subscription = station.didChange.subscribe([&](ReceiverClient::Field field) {
        if (field == ReceiverClient::Field::liveState) {
            told.push_back(station.liveState()->activeSongIndex);
        }
    });
    station.start();
    room.queue.advance(1.0);
    for (const std::int64_t index : {1, 1, -7}) {
        room.broadcaster.update(stateAt(index));
    }
    room.queue.advance(1.0);
    CHECK(told == std::vector<std::int64_t>{0, 1, 1, -7});
    CHECK(room.broadcaster.connectionCount() == 1);
    subscription.reset();
    station.stop();
    room.queue.advance(1.0);
    CHECK(room.broadcaster.connectionCount() == 0);
    CHECK(journal.lines ==
          std::vector<std::string>{"Station arrivée, 1 connectée", "Station partie, 0 connectée"});
}

TEST_CASE("stations beyond the most that are served are closed, and those before stay") {
    Room room;
    room.broadcast();
    room.broadcaster.update(stateAt(1));
    const ServiceEndpoint service{"Régie", AdminBroadcaster::serviceType, "local"};
    std::vector<std::unique_ptr<StreamConnection>> crowd;
    std::size_t closed = 0;
    for (std::size_t i = 0; i < AdminBroadcaster::maximumStations + 3; ++i) {
        crowd.push_back(room.other.connect(service));
        crowd.back()->onStateChange = [&closed](StreamConnection::State state) {
            closed += state == StreamConnection::State::failed ? 1 : 0;
        };
        crowd.back()->start();
    }
    room.queue.advance(1.0);
    CHECK(closed == 3);
    CHECK(room.broadcaster.connectionCount() == AdminBroadcaster::maximumStations);
}
