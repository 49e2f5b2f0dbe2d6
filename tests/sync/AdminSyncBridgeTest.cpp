#include "platform/simulated/SimulatedNetwork.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"
#include "sync/AdminBroadcaster.h"
#include "sync/AdminSyncBridge.h"
#include "sync/ReceiverClient.h"

#include <doctest/doctest.h>

#include <optional>
#include <vector>

using namespace tessivo;

namespace {

/// An admin that broadcasts, and a station connected to it that counts what it is told.
struct Production {
    Production() {
        bridge->attach(state, broadcaster);
        broadcaster.startChecking();
        station.start();
        platform.time.advance(2.25);  // between two ticks of the clock
        REQUIRE(station.status() == ReceiverStatus::connected);
    }

    /// Messages that come in while a moment passes, without a tick of the clock.
    int messages() {
        received = 0;
        platform.time.advance(0.1);
        return received;
    }

    SimulatedPlatform platform;
    AppState state{platform};
    AdminBroadcaster broadcaster{platform.computer, platform.time};
    std::optional<AdminSyncBridge> bridge{std::in_place, platform.time};
    ReceiverClient station{platform.network.addComputer("Plateau"), platform.time,
                           platform.background};
    int received = 0;
    Subscription counting = station.didChange.subscribe([this](ReceiverClient::Field field) {
        received += field == ReceiverClient::Field::liveState ? 1 : 0;
    });
};

}  // namespace

TEST_CASE("each change of the state is one message, which holds what is there after the change") {
    Production production;
    production.state.importShow(showWithSongs(3));
    CHECK(production.messages() == 3);  // the shows, the active one, the cursor
    production.state.goNext();
    CHECK(production.messages() == 3);  // the cursor, the countdown, the clock
    production.state.setAutoAdvanceEnabled(false);
    CHECK(production.messages() == 1);  // a change that stations don't show, all the same

    const auto& told = production.station.liveState();
    REQUIRE(told);
    CHECK(told->show == *production.state.activeShow());
    CHECK(told->activeSongIndex == 1);
    CHECK(told->currentSongStartedAt == production.state.currentSongStartedAt());

    production.received = 0;
    production.platform.time.advance(10.0);
    CHECK(production.received == 10);  // the clock repeats it each second

    // Without an active show nothing is sent, and stations keep what they have.
    production.state.setActiveShowId(std::nullopt);
    production.platform.time.advance(5.0);
    CHECK(production.messages() == 0);
    CHECK(told->show.songs.size() == 3);
}

TEST_CASE("a bridge is attached once, and ends with its owner even when a message is due") {
    Production production;
    production.bridge->attach(production.state, production.broadcaster);
    production.state.importShow(showWithSongs(1));
    CHECK(production.messages() == 3);

    production.state.jumpTo(0);
    production.bridge.reset();
    CHECK(production.messages() == 0);
    production.platform.time.advance(5.0);
    CHECK(production.received == 0);
}
