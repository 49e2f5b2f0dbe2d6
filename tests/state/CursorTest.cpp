#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

using namespace tessivo;

namespace {

/// A state with one active show of three songs starting at 00:00:10:00, 00:00:20:00, 00:00:30:00,
/// and the cursor on the first.
struct Fixture {
    SimulatedPlatform computer;
    AppState state{computer};

    Fixture() {
        Show show = showWithSongs(3);
        show.songs[0].ltcTimecode = "00:00:10:00";
        show.songs[1].ltcTimecode = "00:00:20:00";
        show.songs[2].ltcTimecode = "00:00:30:00";
        show.songs[1].duration = 240;
        state.importShow(std::move(show));
    }

    std::int64_t storedCursor() {
        const auto data =
            decodePersistedData(computer.preferences.values.find(AppState::storageKey)->second);
        REQUIRE(data.has_value());
        return data->activeSongIndex;
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the cursor goes from the start to the finished position, no further") {
    for (const std::int64_t cursor : {1, 2, 3, 3}) {
        state.goNext();
        CHECK(state.activeSongIndex() == cursor);
        CHECK(storedCursor() == cursor);
    }
    state.setActiveShowId(std::nullopt);
    state.jumpTo(2);
    state.goNext();  // nowhere to go without a show
    for (const std::int64_t cursor : {1, 0, 0}) {
        state.goPrev();
        CHECK(state.activeSongIndex() == cursor);
        CHECK(storedCursor() == cursor);
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "only backward moves by hand suspend auto-advance, for fifteen seconds") {
    struct Row {
        std::int64_t from;
        void (*move)(AppState&);
        bool suspends;
    };
    const Row rows[] = {
        {0, [](AppState& s) { s.goNext(); }, false},  {0, [](AppState& s) { s.goPrev(); }, false},
        {2, [](AppState& s) { s.goPrev(); }, true},   {3, [](AppState& s) { s.goPrev(); }, true},
        {2, [](AppState& s) { s.jumpTo(1); }, true},  {1, [](AppState& s) { s.jumpTo(1); }, false},
        {0, [](AppState& s) { s.jumpTo(9); }, false},
    };
    constexpr std::int64_t frameOfSong[] = {250, 500, 750};
    for (const Row& row : rows) {
        CAPTURE(row.from);
        computer.time.advance(20.0);
        state.jumpTo(0);
        computer.time.advance(20.0);
        state.jumpTo(row.from);
        row.move(state);
        const std::int64_t cursor = state.activeSongIndex();
        const std::int64_t other = cursor == 0 ? 1 : 0;
        computer.time.advance(14.9);
        state.checkLtcAutoAdvance(frameOfSong[other], 25);
        CHECK(state.activeSongIndex() == (row.suspends ? cursor : other));
        computer.time.advance(0.2);
        state.checkLtcAutoAdvance(frameOfSong[other], 25);
        CHECK(state.activeSongIndex() == other);
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "timecode moves the cursor once per trigger span, logs it and stores it") {
    for (std::int64_t frame = 490; frame < 540; ++frame) {
        state.checkLtcAutoAdvance(frame, 25);
    }
    CHECK(state.activeSongIndex() == 1);
    CHECK(storedCursor() == 1);
    CHECK(computer.log.str() == "LTC: ✅ avance vers morceau 1 'Morceau 2'\n");
    state.setAutoAdvanceEnabled(false);
    state.checkLtcAutoAdvance(250, 25);
    CHECK(state.activeSongIndex() == 1);
    state.setAutoAdvanceEnabled(true);
    state.checkLtcAutoAdvance(250, 25);
    CHECK(state.activeSongIndex() == 0);
    state.setActiveShowId(std::nullopt);
    state.checkLtcAutoAdvance(500, 25);
    CHECK(state.activeSongIndex() == 0);
}

TEST_CASE_FIXTURE(Fixture,
                  "each move restarts the countdown, which then follows the one-second clock") {
    computer.time.advance(5.5);
    state.goNext();
    CHECK(state.currentSongRemainingSeconds() == 240);
    computer.time.advance(0.5);
    CHECK(state.currentSongRemainingSeconds() == 240);
    computer.time.advance(10.0);
    CHECK(state.currentSongRemainingSeconds() == 230);
    state.jumpTo(1);
    CHECK(state.currentSongRemainingSeconds() == 240);
    state.jumpTo(2);
    CHECK_FALSE(state.currentSongRemainingSeconds().has_value());
}
