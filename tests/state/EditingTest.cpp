#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

using Field = AppState::Field;

const Uuid unknown = Uuid::random();

/// A show whose two songs have one id, and whose two guests of a song have one too.
Show showOfTwins() {
    Show show = showWithSongs(2);
    show.songs[0].guests.assign(2, {Uuid::random(), "", "HF 1", "Mix 1", {}});
    show.songs[0].guests[1].name = "Léa";
    show.songs[1] = show.songs[0];
    return show;
}

/// Two shows with one id; the first is active.
struct Desk {
    SimulatedPlatform computer;
    AppState state{computer};
    const Show show = showOfTwins();
    const Uuid song = show.songs[0].id;
    const Uuid guest = show.songs[0].guests[0].id;

    Desk() {
        state.importShow(show);
        state.importShow(show);
    }
    bool isStored() const {
        const auto stored =
            decodePersistedData(computer.preferences.values.find(AppState::storageKey)->second);
        return stored && stored->shows == state.shows() &&
               stored->activeShowId == state.activeShowId() &&
               stored->activeSongIndex == state.activeSongIndex();
    }
};

}  // namespace

TEST_CASE("an edit changes the first records with its ids, tells it and stores it at once") {
    struct Row {
        void (*edit)(AppState& state, const Desk& desk);
        void (*expected)(Show& show, const Show& edited);
    };
    using S = AppState;
    using D = Desk;
    const Row rows[] = {
        {[](S& s, const D&) { s.renameActiveShow(" "); },
         [](Show& e, const Show&) { e.name = " "; }},
        {[](S& s, const D&) { s.addSong(" C "); },
         [](Show& e, const Show& now) {
             e.songs.push_back({now.songs.back().id, " C ", {}, {}, {}});
         }},
        {[](S& s, const D& d) { s.removeSong(d.song); },
         [](Show& e, const Show&) { e.songs.erase(e.songs.begin()); }},
        {[](S& s, const D& d) { s.updateSongTitle(d.song, ""); },
         [](Show& e, const Show&) { e.songs[0].title = ""; }},
        {[](S& s, const D& d) { s.updateSongLtcTimecode(d.song, " n'importe quoi "); },
         [](Show& e, const Show&) { e.songs[0].ltcTimecode = " n'importe quoi "; }},
        {[](S& s, const D& d) { s.updateSongDuration(d.song, -5); },
         [](Show& e, const Show&) { e.songs[0].duration = -5; }},
        {[](S& s, const D& d) { s.addGuest(d.song); },
         [](Show& e, const Show& now) {
             e.songs[0].guests.push_back(
                 {now.songs[0].guests.back().id, "", "Guest 1", "Générique", {}});
         }},
        {[](S& s, const D& d) { s.removeGuest(d.song, d.guest); },
         [](Show& e, const Show&) { e.songs[0].guests.clear(); }},
        {[](S& s, const D& d) { s.updateGuest(d.song, d.guest, "x", {}, {}); },
         [](Show& e, const Show&) { e.songs[0].guests[0].name = "x"; }},
        {[](S& s, const D& d) { s.updateGuest(d.song, d.guest, {}, "x", {}); },
         [](Show& e, const Show&) { e.songs[0].guests[0].mic = "x"; }},
        {[](S& s, const D& d) { s.updateGuest(d.song, d.guest, {}, {}, "x"); },
         [](Show& e, const Show&) { e.songs[0].guests[0].iem = "x"; }},
        {[](S& s, const D& d) { s.updateGuestVolume(d.song, d.guest, ""); },
         [](Show& e, const Show&) { e.songs[0].guests[0].volume = ""; }},
        {[](S& s, const D&) { s.addMic(" HF "); },
         [](Show& e, const Show&) { e.mics.push_back(" HF "); }},
        {[](S& s, const D&) { s.removeMic(1); },
         [](Show& e, const Show&) { e.mics.erase(e.mics.begin() + 1); }},
        {[](S& s, const D&) { s.updateMic(1, ""); }, [](Show& e, const Show&) { e.mics[1] = ""; }},
        {[](S& s, const D&) { s.addIem("Mix"); },
         [](Show& e, const Show&) { e.iems.push_back("Mix"); }},
        {[](S& s, const D&) { s.removeIem(1); }, [](Show& e, const Show&) { e.iems.pop_back(); }},
        {[](S& s, const D&) { s.updateIem(1, ""); }, [](Show& e, const Show&) { e.iems[1] = ""; }},
        // Nothing to be found: stored all the same.
        {[](S& s, const D& d) { s.updateGuest(d.song, unknown, "x", "x", "x"); }, {}},
        {[](S& s, const D& d) { s.updateGuestVolume(unknown, d.guest, "x"); }, {}},
        {[](S& s, const D& d) { s.removeGuest(unknown, d.guest); }, {}},
        {[](S& s, const D&) { s.addGuest(unknown); }, {}},
        {[](S& s, const D&) { s.removeSong(unknown); }, {}},
        {[](S& s, const D&) { s.updateSongTitle(unknown, "x"); }, {}},
        {[](S& s, const D&) { s.removeMic(-1); }, {}},
        {[](S& s, const D&) { s.updateMic(4, "perdu"); }, {}},
    };
    for (const Row& row : rows) {
        CAPTURE(&row - rows);
        Desk desk;
        AppState& state = desk.state;
        const int& writes = desk.computer.preferences.writes;
        const int writesBefore = writes;
        std::vector<Show> told;
        auto before =
            state.willChange.subscribe([&](Field) { CHECK(state.shows()[0] == desk.show); });
        auto after = state.didChange.subscribe([&](Field) { told.push_back(state.shows()[0]); });
        row.edit(state, desk);
        Show expected = desk.show;
        if (row.expected) {
            row.expected(expected, state.shows()[0]);
        }
        CHECK(state.shows() == std::vector{expected, desk.show});
        REQUIRE_FALSE(told.empty());
        CHECK(told == std::vector(told.size(), expected));
        CHECK(writes == writesBefore + 1);
        CHECK(desk.isStored());

        before.reset();
        after.reset();
        state.setActiveShowId(std::nullopt);
        const int writesWithoutShow = writes;
        row.edit(state, desk);
        CHECK(state.shows() == std::vector{expected, desk.show});
        CHECK(writes == writesWithoutShow);
    }
}

TEST_CASE("empty names are refused, and absent values clear") {
    Desk desk;
    const int writes = desk.computer.preferences.writes;
    desk.state.renameActiveShow("");
    desk.state.addSong("");
    desk.state.addMic("");
    desk.state.addIem("");
    CHECK(desk.computer.preferences.writes == writes);
    desk.state.updateSongLtcTimecode(desk.song, "1:0:0:0");
    desk.state.updateSongDuration(desk.song, 60);
    desk.state.updateGuestVolume(desk.song, desk.guest, "-3");
    CHECK(desk.state.shows()[0] != desk.show);
    desk.state.updateSongLtcTimecode(desk.song, std::nullopt);
    desk.state.updateSongDuration(desk.song, std::nullopt);
    desk.state.updateGuestVolume(desk.song, desk.guest, std::nullopt);
    CHECK(desk.state.shows()[0] == desk.show);
}

TEST_CASE("nobody sees the moved songs under the cursor of before") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.importShow(showWithSongs(4));
    state.jumpTo(2);
    const auto seen = [&] {
        const auto index = static_cast<std::size_t>(state.activeSongIndex());
        return state.activeShow()->songs[index].title + " of " +
               std::to_string(state.activeShow()->songs.size()) + " at " + std::to_string(index);
    };
    std::string places;
    auto before = state.willChange.subscribe([&](Field) { places += "< " + seen() + '\n'; });
    const auto after = state.didChange.subscribe([&](Field) { places += "> " + seen() + '\n'; });
    state.moveSong({2}, 0);
    const std::string middle = "Morceau 3 of 4 at 0\n";
    CHECK(places == "< Morceau 3 of 4 at 2\n< Morceau 3 of 4 at 2\n> " + middle + "> " + middle);
    state.jumpTo(3);
    places.clear();
    state.removeSong(state.activeShow()->songs[0].id);
    const std::string last = "Morceau 4 of 3 at 2\n";
    CHECK(places == "< Morceau 4 of 4 at 3\n< Morceau 4 of 4 at 3\n> " + last + "> " + last);
}

TEST_CASE("a new show goes last, active and at its start; a deleted one leaves the cursor") {
    Desk desk;
    desk.state.jumpTo(2);
    desk.state.createShow("Deux");
    const Uuid second = desk.state.shows().back().id;
    CHECK(desk.state.activeShow() == &desk.state.shows()[2]);
    CHECK(desk.state.activeShow()->name == "Deux");
    CHECK(desk.state.activeSongIndex() == 0);
    desk.state.setActiveShowId(desk.show.id);
    desk.state.jumpTo(2);
    desk.state.deleteShow(unknown);
    desk.state.deleteShow(second);
    CHECK(desk.state.shows() == std::vector{desk.show, desk.show});
    CHECK(desk.state.activeShow() == &desk.state.shows()[0]);
    // The argument lies in what is deleted.
    desk.state.deleteShow(desk.state.shows().front().id);
    CHECK(desk.state.shows().empty());
    CHECK_FALSE(desk.state.activeShowId().has_value());
    CHECK(desk.state.activeSongIndex() == 2);
    CHECK(desk.isStored());
}

TEST_CASE("the choice of a show for the stage and of the timecode is told") {
    Desk desk;
    std::vector<Field> told;
    const auto subscription =
        desk.state.didChange.subscribe([&](Field field) { told.push_back(field); });
    desk.state.setActiveDisplayShowId(desk.show.id);
    desk.state.setAutoAdvanceEnabled(false);
    CHECK(told == std::vector{Field::activeDisplayShowId, Field::autoAdvanceEnabled});
    CHECK(desk.state.activeDisplayShowId() == desk.show.id);
    CHECK_FALSE(desk.state.autoAdvanceEnabled());
}
