#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

using namespace tessivo;

namespace {

constexpr std::int64_t frameOfSong[] = {250, 500, 750};

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

TEST_CASE_FIXTURE(
    Fixture,
    "a move restarts the countdown and is stored; a backward one by hand suspends timecode") {
    enum Effect { none, moves, suspends };
    struct Row {
        std::int64_t from;
        void (*move)(AppState&);
        std::int64_t to;
        Effect effect;
    };
    const Row rows[] = {
        {0, [](AppState& s) { s.goNext(); }, 1, moves},
        {2, [](AppState& s) { s.goNext(); }, 3, moves},
        {3, [](AppState& s) { s.goNext(); }, 3, none},
        {9, [](AppState& s) { s.goNext(); }, 9, none},
        {0, [](AppState& s) { s.goPrev(); }, 0, none},
        {1, [](AppState& s) { s.goPrev(); }, 0, suspends},
        {3, [](AppState& s) { s.goPrev(); }, 2, suspends},
        {2, [](AppState& s) { s.jumpTo(1); }, 1, suspends},
        {1, [](AppState& s) { s.jumpTo(1); }, 1, moves},
        {0, [](AppState& s) { s.jumpTo(9); }, 9, moves},
        {0, [](AppState& s) { s.checkLtcAutoAdvance(frameOfSong[2], 25); }, 2, moves},
        {2, [](AppState& s) { s.checkLtcAutoAdvance(frameOfSong[0], 25); }, 0, moves},
        {2, [](AppState& s) { s.checkLtcAutoAdvance(frameOfSong[2], 25); }, 2, none},
    };
    for (const Row& row : rows) {
        CAPTURE(&row - rows);
        state.jumpTo(0);
        computer.time.advance(20.0);
        state.jumpTo(row.from);
        const Instant before = computer.time.now();
        const int writes = computer.preferences.writes;
        computer.time.advance(0.5);
        row.move(state);
        CHECK(state.activeSongIndex() == row.to);
        CHECK(storedCursor() == row.to);
        CHECK(computer.preferences.writes == writes + (row.effect != none ? 1 : 0));
        const Instant started = row.effect != none ? computer.time.now() : before;
        CHECK(state.currentSongStartedAt() == started);
        CHECK(state.nowTick() >= started);

        const std::int64_t other = row.to == 0 ? 1 : 0;
        computer.time.advance(14.9);
        state.checkLtcAutoAdvance(frameOfSong[other], 25);
        CHECK(state.activeSongIndex() == (row.effect == suspends ? row.to : other));
        computer.time.advance(0.2);
        state.checkLtcAutoAdvance(frameOfSong[other], 25);
        CHECK(state.activeSongIndex() == other);
    }
}

TEST_CASE_FIXTURE(Fixture, "neither a step forward nor a set clock lifts the suspension") {
    state.jumpTo(2);
    state.goPrev();
    state.goNext();
    computer.time.setWallClock(computer.time.now() + 3600.0);
    computer.time.advance(14.9);
    state.checkLtcAutoAdvance(frameOfSong[0], 25);
    CHECK(state.activeSongIndex() == 2);
}

TEST_CASE_FIXTURE(Fixture, "without a show there is no way but back") {
    state.jumpTo(1);
    state.setActiveShowId(std::nullopt);
    state.goNext();
    state.checkLtcAutoAdvance(frameOfSong[2], 25);
    CHECK(state.activeSongIndex() == 1);
    state.goPrev();
    CHECK(state.activeSongIndex() == 0);
}

TEST_CASE_FIXTURE(Fixture, "timecode moves the cursor once per trigger span and logs it") {
    for (std::int64_t frame = 490; frame < 540; ++frame) {
        state.checkLtcAutoAdvance(frame, 25);
    }
    CHECK(computer.log.str() == "LTC: ✅ avance vers morceau 1 'Morceau 2'\n");
    state.setAutoAdvanceEnabled(false);
    state.checkLtcAutoAdvance(250, 25);
    CHECK(state.activeSongIndex() == 1);
}

TEST_CASE_FIXTURE(Fixture,
                  "the countdown follows the one-second clock, whatever clock the computer shows") {
    computer.time.advance(5.5);
    state.goNext();
    CHECK(state.currentSongRemainingSeconds() == 240);
    computer.time.advance(0.5);
    CHECK(state.currentSongRemainingSeconds() == 240);
    computer.time.setWallClock(computer.time.now() + -3600.0);
    computer.time.advance(10.0);
    CHECK(state.currentSongRemainingSeconds() == 230);
    state.goNext();
    CHECK_FALSE(state.currentSongRemainingSeconds().has_value());
}

TEST_CASE_FIXTURE(Fixture, "what another computer led goes on at its song and its countdown") {
    Show theirs = state.shows().front();
    theirs.name = "Version de la régie";
    const std::string ours = state.shows().front().name;
    state.takeOver(theirs, 1, computer.time.now() + -100.5);
    CHECK(state.shows() == std::vector{theirs});
    CHECK(state.activeShow() == &state.shows().front());
    CHECK(storedCursor() == 1);
    CHECK(state.movedBy() == AppState::MovedBy::resumption);
    CHECK(state.currentSongRemainingSeconds() == 140);
    state.undo();
    CHECK(state.shows().front().name == ours);
}
