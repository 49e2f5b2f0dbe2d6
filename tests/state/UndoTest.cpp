#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/RandomRecords.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

/// A desk at which somebody does this and that.
struct Desk {
    SimulatedPlatform computer;
    AppState state{computer};
    test::RandomRecords random{20010101};

    template <typename Record>
    Uuid anyOf(const std::vector<Record>& records) {
        return records.empty() || random.below(9) == 0 ? Uuid()
                                                       : records[random.below(records.size())].id;
    }
    std::int64_t place(std::size_t count) {
        return static_cast<std::int64_t>(random.below(count + 2)) - 1;
    }

    void edit() {
        AppState& s = state;
        const Show show = s.activeShow() ? *s.activeShow() : Show();
        const Uuid song = anyOf(show.songs);
        const Song* known = firstWithId(show.songs, song);
        const Uuid guest = known ? anyOf(known->guests) : Uuid();
        const std::function<void()> edits[] = {
            [&] { s.createShow(random.text()); },
            [&] { s.importShow(random.below(3) == 0 ? show : random.show()); },  // a twin, or new
            [&] { s.deleteShow(anyOf(s.shows())); },
            [&] {
                Show opened = random.show();
                opened.id = random.below(2) == 0 ? anyOf(s.shows()) : opened.id;
                computer.files.contents["x"] = encodeJson(opened);
                computer.panels.answers = {"x"};
                s.openShow();
            },
            [&] { s.setActiveShowId(anyOf(s.shows())); },
            [&] { s.addSong(random.text()); },
            [&] { s.removeSong(song); },
            [&] {
                s.moveSong({place(show.songs.size()), place(show.songs.size())},
                           place(show.songs.size()));
            },
            [&] { s.updateSongTitle(song, random.text()); },
            [&] { s.updateSongDuration(song, random.integer()); },
            [&] { s.addGuest(song); },
            [&] { s.removeGuest(song, guest); },
            [&] { s.updateGuest(song, guest, random.text(), {}, random.text()); },
            [&] { s.addMic(random.text()); },
            [&] { s.removeIem(place(show.iems.size())); },
            [&] { s.updateMic(place(show.mics.size()), random.text()); },
            [&] { s.jumpTo(place(show.songs.size())); },
        };
        edits[random.below(std::size(edits))]();
    }

    bool isStored() const {
        const auto stored =
            decodePersistedData(computer.preferences.values.find(AppState::storageKey)->second);
        return stored && stored->shows == state.shows() &&
               stored->activeSongIndex == state.activeSongIndex();
    }
};

}  // namespace

TEST_CASE("any sequence of edits can be taken back and made again, step by step") {
    for (const double pause : {0.1, 2.0}) {
        CAPTURE(pause);
        Desk desk;
        AppState& state = desk.state;
        for (int round = 0; round < 40; ++round) {
            CAPTURE(round);
            std::vector<std::vector<Show>> shows = {state.shows()};
            for (int i = 0; i < 20; ++i) {
                desk.edit();
                desk.computer.time.advance(pause);
                if (state.shows() != shows.back()) {
                    shows.push_back(state.shows());
                }
            }
            const std::vector<Show> edited = shows.back();
            int steps = 0;
            for (; state.shows() != shows.front(); ++steps) {
                REQUIRE(state.undoableEdit());
                state.undo();
                CHECK(desk.isStored());
                if (pause > 1.0) {  // nothing was joined
                    shows.pop_back();
                    REQUIRE(state.shows() == shows.back());
                }
            }
            for (; steps > 0; --steps) {
                REQUIRE(state.redoableEdit());
                state.redo();
            }
            REQUIRE(state.shows() == edited);
            CHECK(desk.isStored());
        }
    }
}

TEST_CASE("taking back keeps the cursor on its song, the countdown and the open show") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.importShow(showWithSongs(5));
    const std::vector<Song> songs = state.activeShow()->songs;
    state.jumpTo(3);
    computer.time.advance(10.0);
    state.removeSong(songs[0].id);
    state.moveSong({0}, 4);
    state.removeSong(songs[4].id);
    const Instant start = state.currentSongStartedAt();
    for (const auto& step : {&AppState::undo, &AppState::redo, &AppState::undo}) {
        for (int i = 0; i < 3; ++i) {
            (state.*step)();
            CHECK(songAt(state.activeShow(), state.activeSongIndex())->id == songs[3].id);
        }
    }
    CHECK(state.activeShow()->songs == songs);
    CHECK(state.currentSongStartedAt() == start);

    state.addSong("Rappel");
    state.jumpTo(6);  // past it
    state.undo();
    CHECK(state.activeSongIndex() == 5);

    const auto id = state.activeShowId();
    state.undo();
    CHECK(state.shows().empty());
    CHECK_FALSE(state.activeShowId());
    state.undo();  // there is nothing left
    state.redo();
    CHECK(state.shows().size() == 1);
    CHECK_FALSE(state.activeShowId());
    state.setActiveShowId(id);
    state.addSong("Rappel");
    CHECK_FALSE(state.redoableEdit());
}

TEST_CASE("what is typed into one field without a pause is one step with the first name") {
    SimulatedPlatform computer;
    AppState state(computer);
    const Show other = showWithSongs(1);
    state.importShow(other);
    Show show = showWithSongs(4);
    show.songs[3].guests.resize(2);
    state.importShow(show);
    const std::vector<Song> songs = state.activeShow()->songs;
    const auto name = [&](std::size_t guest, const char* text) {
        state.updateGuest(songs[3].id, songs[3].guests[guest].id, text, {}, {});
    };
    const auto type = [&](std::size_t song, const char* text, double pause) {
        computer.time.advance(pause);
        state.updateSongTitle(songs[song].id, text);
    };
    const struct {
        const char* what;
        std::function<void()> act;
        int steps;
        const char* name;
    } table[] = {
        {"one word", [&] { type(0, "A", 2.0), type(0, "Ab", 0.9), type(0, "Abc", 0.9); }, 1,
         "renommer «\u00A0Morceau 1\u00A0»"},
        {"a pause", [&] { type(0, "A", 2.0), type(0, "Ab", 1.1); }, 2, "renommer «\u00A0A\u00A0»"},
        {"typed and erased", [&] { type(0, "A", 2.0), type(0, "Morceau 1", 0.1); }, 0, nullptr},
        {"taken back between",
         [&] { type(0, "A", 2.0), type(0, "B", 0.1), state.undo(), type(0, "C", 0.1); }, 1,
         "renommer «\u00A0Morceau 1\u00A0»"},
        {"taken back twice between",
         [&] {
             type(0, "A", 2.0), type(0, "B", 2.0), type(0, "C", 2.0);
             state.undo(), state.undo(), type(0, "D", 0.1);
         },
         2, "renommer «\u00A0A\u00A0»"},
        {"two of a kind: songs", [&] { state.moveSong({0}, 2), state.moveSong({3}, 0); }, 2,
         "déplacer «\u00A0Morceau 4\u00A0»"},
        {"guests", [&] { name(0, "A"), name(1, "B"); }, 2, "nommer un guest"},
        {"microphones", [&] { state.updateMic(0, "A"), state.updateMic(1, "B"); }, 2,
         "renommer «\u00A0Guest 2\u00A0»"},
        {"shows",
         [&] {
             state.updateMic(0, "A"), state.setActiveShowId(other.id), state.updateMic(0, "A");
             state.setActiveShowId(show.id);
         },
         2, "renommer «\u00A0Guest 1\u00A0»"},
        {"a drag over rows",
         [&] { computer.time.advance(2.0), state.moveSong({0}, 2), state.moveSong({1}, 3); }, 1,
         "déplacer «\u00A0Morceau 1\u00A0»"},
        {"a drag and back", [&] { state.moveSong({0}, 2), state.moveSong({1}, 0); }, 0, nullptr},
        {"chosen, not typed",
         [&] {
             state.updateSongDuration(songs[0].id, 1), state.updateSongDuration(songs[0].id, 2);
         },
         2, "changer la durée de «\u00A0Morceau 1\u00A0»"},
    };
    for (const auto& row : table) {
        CAPTURE(row.what);
        const std::vector<Show> before = state.shows();
        row.act();
        if (row.name) {
            REQUIRE(state.undoableEdit());
            CHECK(state.undoableEdit()->name == row.name);
        }
        for (int i = 0; i < row.steps; ++i) {
            CHECK(state.shows() != before);
            state.undo();
        }
        CHECK(state.shows() == before);
    }
}

TEST_CASE("a removal offers for eight seconds to take it back, as long as it is the last edit") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.importShow(showWithSongs(2));
    state.removeSong(Uuid());  // nobody's
    CHECK_FALSE(state.offeredUndo());
    state.removeSong(state.activeShow()->songs[0].id);
    computer.time.advance(7.0);
    REQUIRE(state.offeredUndo());
    CHECK(state.offeredUndo()->removal == "Morceau supprimé\u00A0: «\u00A0Morceau 1\u00A0»");
    state.addSong("Rappel");
    CHECK_FALSE(state.offeredUndo());
    state.undo();
    CHECK(state.offeredUndo());
    computer.time.setWallClock(computer.time.now() + -60.0);
    computer.time.advance(2.0);
    CHECK_FALSE(state.offeredUndo());
    computer.time.setWallClock(computer.time.now() + 60.0);
    computer.time.advance(1.0);
    CHECK_FALSE(state.offeredUndo());
}

TEST_CASE("the history is bounded by its steps and by its bytes, and keeps the newest edit") {
    const struct {
        int adds;
        std::size_t bytes;
        int kept;
    } table[] = {{100, 1U << 20U, 100},
                 {1200, 10, 1000},
                 {5, 50U << 20U, 2},
                 {2, 2 * ShowHistory::maximumBytes, 1}};
    for (const auto& row : table) {
        CAPTURE(row.bytes);
        ShowHistory history;
        for (int i = 0; i < row.adds; ++i) {
            Show show;
            show.name = std::string(row.bytes, 'x');
            history.add({0, {}, {std::move(show)}}, {});
        }
        int kept = 0;
        for (; history.undoable(); ++kept) {
            history.stepBack();
        }
        CHECK(kept == row.kept);
    }
}
