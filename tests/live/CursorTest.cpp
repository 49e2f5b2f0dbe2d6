#include "model/AppState.h"
#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <optional>

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

TEST_CASE_FIXTURE(Fixture, "next goes up to the finished position and no further") {
    for (int press = 0; press < 3; ++press) {
        state.goNext();
    }
    CHECK(state.activeSongIndex() == 3);
    CHECK(storedCursor() == 3);
    const int writes = computer.preferences.writes;
    state.goNext();
    CHECK(state.activeSongIndex() == 3);
    CHECK(computer.preferences.writes == writes);
}

TEST_CASE_FIXTURE(Fixture, "without an active show next does nothing, while previous still works") {
    state.jumpTo(2);
    state.setActiveShowId(std::nullopt);
    state.goNext();
    CHECK(state.activeSongIndex() == 2);
    state.goPrev();
    CHECK(state.activeSongIndex() == 1);
    state.goPrev();
    state.goPrev();
    CHECK(state.activeSongIndex() == 0);
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
    state.checkLtcAutoAdvance(250, 25);
    CHECK(state.activeSongIndex() == 0);
}

TEST_CASE_FIXTURE(Fixture, "with auto-advance off or no active show timecode moves nothing") {
    state.setAutoAdvanceEnabled(false);
    state.checkLtcAutoAdvance(500, 25);
    CHECK(state.activeSongIndex() == 0);
    state.setAutoAdvanceEnabled(true);
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

TEST_CASE_FIXTURE(Fixture, "observers hear of a change before and after it") {
    std::optional<std::int64_t> before, after;
    const auto will = state.willChange.subscribe([&](AppState::Field field) {
        if (field == AppState::Field::activeSongIndex) {
            before = state.activeSongIndex();
        }
    });
    const auto did = state.didChange.subscribe([&](AppState::Field field) {
        if (field == AppState::Field::activeSongIndex) {
            after = state.activeSongIndex();
        }
    });
    state.goNext();
    CHECK(before == 0);
    CHECK(after == 1);
}
