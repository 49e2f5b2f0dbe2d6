#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <functional>
#include <memory>
#include <string>

using namespace tessivo;

TEST_CASE("locked, nothing changes a show or leaves it, and the show goes on") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.importShow(showWithSongs(3));
    state.addSong("Rappel");
    state.addSong("Encore");
    state.undo();
    const std::vector<Show> shows = state.shows();
    const auto id = state.activeShowId();
    const Uuid song = shows[0].songs[0].id;
    state.setLocked(true);
    const std::function<void()> refused[] = {
        [&] { state.createShow("x"); },
        [&] { state.importShow(showWithSongs(1)); },
        [&] { state.openShow(); },
        [&] { state.saveCurrentShow(); },
        [&] { state.saveCurrentShowAs(); },
        [&] { state.deleteShow(*id); },
        [&] { state.setActiveShowId(std::nullopt); },
        [&] { state.renameActiveShow("x"); },
        [&] { state.removeSong(song); },
        [&] { state.updateSongTitle(song, "x"); },
        [&] { state.addGuest(song); },
        [&] { state.removeMic(0); },
        [&] { state.undo(); },
        [&] { state.redo(); },
    };
    for (const auto& act : refused) {
        CAPTURE(&act - refused);
        act();
        CHECK(state.shows() == shows);
        CHECK(state.activeShowId() == id);
    }
    CHECK(computer.panels.openRequests.empty());
    CHECK(computer.panels.saveRequests.empty());
    state.goNext();
    state.jumpTo(2);
    state.goPrev();
    CHECK(state.activeSongIndex() == 1);
    state.setActiveDisplayShowId(id);
    CHECK(state.activeDisplayShowId() == id);
    state.setLocked(false);
    state.redo();
    CHECK(state.shows() != shows);
}

TEST_CASE("the lock outlasts a restart, after which a show may be opened once") {
    SimulatedPlatform computer;
    auto state = std::make_unique<AppState>(computer);
    const Show first = showWithSongs(1);
    const Show second = showWithSongs(2);
    state->importShow(first);
    state->importShow(second);
    CHECK_FALSE(computer.preferences.values.contains(AppState::lockKey));
    for (const bool locked : {true, false}) {
        CAPTURE(locked);
        computer.preferences.isFull = true;
        state->setLocked(locked);
        CHECK_FALSE(state->keepsShows());
        computer.preferences.isFull = false;
        computer.time.advance(1.0);
        CHECK(state->keepsShows());

        state.reset();
        state = std::make_unique<AppState>(computer);
        CHECK(state->isLocked() == locked);
        state->setActiveShowId(first.id);
        CHECK(state->activeShowId() == first.id);
        state->setActiveShowId(second.id);
        CHECK((state->activeShowId() == first.id) == locked);
    }
}
