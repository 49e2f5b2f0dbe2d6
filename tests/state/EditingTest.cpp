#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

/// A show of songs with one letter each, under the cursor.
class Desk {
public:
    explicit Desk(const std::string& letters, std::int64_t cursor = 0) : state(computer) {
        Show show;
        for (const char letter : letters) {
            show.songs.emplace_back().title = letter;
        }
        state.importShow(std::move(show));
        state.jumpTo(cursor);
    }

    const Show& show() const { return *state.activeShow(); }
    Uuid song(std::size_t index) const { return show().songs[index].id; }
    std::string letters() const {
        std::string titles;
        for (const Song& song : show().songs) {
            titles += song.title;
        }
        return titles;
    }
    bool isStored() const {
        const auto stored =
            decodePersistedData(computer.preferences.values.find(AppState::storageKey)->second);
        return stored && stored->shows == state.shows() &&
               stored->activeShowId == state.activeShowId() &&
               stored->activeSongIndex == state.activeSongIndex();
    }

    SimulatedPlatform computer;
    AppState state;
};

using Labels = std::vector<std::string>;

const Uuid unknown = Uuid::random();

}  // namespace

TEST_CASE("a new show goes last with the usual labels, active, under a cursor at its start") {
    const std::pair<const char*, const char*> names[] = {
        {"", "Nouveau show"}, {" ", " "}, {"Olympia", "Olympia"}};
    for (const auto& [given, name] : names) {
        Desk desk("ABC", 2);
        desk.state.createShow(given);
        CHECK(desk.state.activeShowId() == desk.state.shows().back().id);
        CHECK(desk.show().name == name);
        CHECK(desk.show().mics == Labels{"Guest 1", "Guest 2", "Guest 3", "Guest 4"});
        CHECK(desk.show().iems == Labels{"Générique", "Perso"});
        CHECK(desk.show().songs.empty());
        CHECK(desk.state.activeSongIndex() == 0);
        CHECK(desk.isStored());
    }
}

TEST_CASE("deleting shows leaves the cursor, and closes the show that was open") {
    Desk desk("ABC");
    const Show first = desk.show();
    desk.state.createShow("Deux");
    const Uuid second = desk.show().id;
    desk.state.importShow(first);  // a twin of the first
    desk.state.jumpTo(2);
    desk.state.deleteShow(unknown);
    CHECK(desk.state.shows().size() == 3);
    desk.state.deleteShow(second);
    CHECK(desk.state.shows().size() == 2);
    CHECK(desk.state.activeShowId() == first.id);
    // The argument lies in what is deleted.
    desk.state.deleteShow(desk.state.shows().front().id);
    CHECK(desk.state.shows().empty());
    CHECK_FALSE(desk.state.activeShowId().has_value());
    CHECK(desk.state.activeSongIndex() == 2);
    CHECK(desk.isStored());
}

TEST_CASE("removing a song keeps the cursor on its song, or on a song") {
    struct Row {
        const char* songs;
        std::int64_t cursor;
        std::size_t removed;
        const char* left;
        std::int64_t cursorAfter;
    };
    const Row rows[] = {
        {"ABCDE", 3, 1, "ACDE", 2},  {"ABCDE", 3, 3, "ABCE", 3},   {"ABCDE", 3, 4, "ABCD", 3},
        {"ABCDE", 4, 4, "ABCD", 3},  {"ABCDE", 5, 0, "BCDE", 3},   {"ABCDE", 5, 4, "ABCD", 3},
        {"ABCDE", 42, 2, "ABDE", 3}, {"ABCDE", -1, 0, "BCDE", -1}, {"A", 0, 0, "", 0},
        {"A", 1, 0, "", 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.cursor);
        CAPTURE(row.removed);
        Desk desk(row.songs, row.cursor);
        desk.state.removeSong(desk.song(row.removed));
        CHECK(desk.letters() == row.left);
        CHECK(desk.state.activeSongIndex() == row.cursorAfter);
    }
}

TEST_CASE("moving songs keeps their order and the cursor on its song") {
    struct Row {
        std::set<std::int64_t> from;
        std::int64_t to;
        std::int64_t cursor;
        const char* after;
        std::int64_t cursorAfter;
    };
    const Row rows[] = {
        {{0}, 2, 0, "BACD", 1},        {{3}, 0, 0, "DABC", 1},    {{1}, 4, 0, "ACDB", 0},
        {{2}, 0, 2, "CABD", 0},        {{0}, 4, 2, "BCDA", 1},    {{0, 2}, 4, 2, "BDAC", 3},
        {{1, 3}, 2, 3, "ABDC", 2},     {{0, 3}, 0, 1, "ADBC", 2}, {{1}, 1, 1, "ABCD", 1},
        {{1}, 2, 1, "ABCD", 1},        {{0}, 4, 4, "BCDA", 4},    {{0}, 4, 9, "BCDA", 9},
        {{3}, 0, -1, "DABC", -1},      {{}, 0, 2, "ABCD", 2},     {{-1, 4}, 0, 2, "ABCD", 2},
        {{-1, 4, 3}, 1, 0, "ADBC", 0}, {{0}, 5, 2, "ABCD", 2},    {{0}, -1, 2, "ABCD", 2},
    };
    for (const Row& row : rows) {
        CAPTURE(row.after);
        CAPTURE(row.to);
        Desk desk("ABCD", row.cursor);
        desk.state.moveSong(row.from, row.to);
        CHECK(desk.letters() == row.after);
        CHECK(desk.state.activeSongIndex() == row.cursorAfter);
    }
}

TEST_CASE("nobody sees the moved songs under the cursor of before") {
    Desk desk("ABCD", 2);
    std::string seen;
    const auto subscription = desk.state.didChange.subscribe([&](AppState::Field) {
        seen += desk.show().songs[static_cast<std::size_t>(desk.state.activeSongIndex())].title;
    });
    desk.state.moveSong({2}, 0);
    desk.state.removeSong(desk.song(1));
    CHECK(seen == "CCCC");
}

TEST_CASE("a song's fields are kept as given, on the first song with the id") {
    Desk desk("AB");
    Show twins = desk.show();
    twins.id = Uuid::random();
    twins.songs[1].id = twins.songs[0].id;
    desk.state.importShow(twins);
    const Uuid id = desk.song(0);
    desk.state.updateSongTitle(id, "");
    desk.state.updateSongLtcTimecode(id, " n'importe quoi ");
    desk.state.updateSongDuration(id, -5);
    CHECK(desk.show().songs[0] == Song{id, "", {}, " n'importe quoi ", -5});
    CHECK(desk.show().songs[1] == twins.songs[1]);
    desk.state.updateSongLtcTimecode(id, std::nullopt);
    desk.state.updateSongDuration(id, std::nullopt);
    CHECK(desk.show().songs[0] == Song{id, "", {}, std::nullopt, std::nullopt});
    desk.state.addSong(" C ");
    CHECK(desk.show().songs.back().title == " C ");
}

TEST_CASE("a new guest gets the first labels; edits change what is given and nothing else") {
    Desk desk("AB");
    desk.state.updateMic(0, "HF 1");
    desk.state.addGuest(desk.song(1));
    REQUIRE(desk.show().songs[1].guests.size() == 1);
    const Guest made = desk.show().songs[1].guests[0];
    CHECK(made == Guest{made.id, "", "HF 1", "Générique", std::nullopt});

    desk.state.updateGuest(desk.song(1), made.id, "Léa", std::nullopt, std::nullopt);
    desk.state.updateGuest(desk.song(1), made.id, std::nullopt, "HF 9", std::nullopt);
    desk.state.updateGuest(desk.song(1), made.id, std::nullopt, std::nullopt, "");
    desk.state.updateGuestVolume(desk.song(1), made.id, "");
    CHECK(desk.show().songs[1].guests[0] == Guest{made.id, "Léa", "HF 9", "", ""});
    desk.state.updateGuestVolume(desk.song(1), made.id, std::nullopt);
    CHECK_FALSE(desk.show().songs[1].guests[0].volume.has_value());

    while (!desk.show().mics.empty()) {
        desk.state.removeMic(0);
    }
    desk.state.removeIem(1);
    desk.state.removeIem(0);
    desk.state.addGuest(desk.song(1));
    CHECK(desk.show().songs[1].guests[1].mic.empty());
    CHECK(desk.show().songs[1].guests[1].iem.empty());

    // The argument lies in what is removed.
    desk.state.removeGuest(desk.song(1), desk.show().songs[1].guests[0].id);
    REQUIRE(desk.show().songs[1].guests.size() == 1);
    CHECK(desk.show().songs[1].guests[0].id != made.id);
}

TEST_CASE("labels are edited by position, in their own list only, and guests keep theirs") {
    Desk desk("A");
    desk.state.addGuest(desk.song(0));
    const std::vector<Song> songs = desk.show().songs;
    desk.state.addMic("  HF ");
    desk.state.addMic("  HF ");
    desk.state.updateMic(0, "");
    desk.state.removeMic(1);
    desk.state.addIem("Mix");
    desk.state.updateIem(0, "Retours");
    desk.state.removeIem(1);
    for (const std::int64_t outside : {INT64_MIN, std::int64_t{-1}, std::int64_t{5}, INT64_MAX}) {
        desk.state.updateMic(outside, "perdu");
        desk.state.removeMic(outside);
        desk.state.updateIem(outside, "perdu");
        desk.state.removeIem(outside);
    }
    CHECK(desk.show().mics == Labels{"", "Guest 3", "Guest 4", "  HF ", "  HF "});
    CHECK(desk.show().iems == Labels{"Retours", "Mix"});
    CHECK(desk.show().songs == songs);
}

TEST_CASE("every edit is stored at once, and does nothing when the show is gone behind it") {
    using Edit = void (*)(AppState&, Uuid song, Uuid guest);
    const Edit edits[] = {
        [](AppState& state, Uuid, Uuid) { state.renameActiveShow("Autre"); },
        [](AppState& state, Uuid, Uuid) { state.addSong("Autre"); },
        [](AppState& state, Uuid song, Uuid) { state.removeSong(song); },
        [](AppState& state, Uuid, Uuid) { state.moveSong({0}, 2); },
        [](AppState& state, Uuid song, Uuid) { state.updateSongTitle(song, "Autre"); },
        [](AppState& state, Uuid song, Uuid) { state.updateSongLtcTimecode(song, "1:0:0:0"); },
        [](AppState& state, Uuid song, Uuid) { state.updateSongDuration(song, 60); },
        [](AppState& state, Uuid song, Uuid) { state.addGuest(song); },
        [](AppState& state, Uuid song, Uuid guest) { state.removeGuest(song, guest); },
        [](AppState& state, Uuid song, Uuid guest) {
            state.updateGuest(song, guest, "Léa", {}, {});
        },
        [](AppState& state, Uuid song, Uuid guest) { state.updateGuestVolume(song, guest, "-3"); },
        [](AppState& state, Uuid, Uuid) { state.addMic("HF 5"); },
        [](AppState& state, Uuid, Uuid) { state.removeMic(0); },
        [](AppState& state, Uuid, Uuid) { state.updateMic(0, "HF 1"); },
    };
    for (const Edit& edit : edits) {
        CAPTURE(&edit - edits);
        Desk desk("ABC", 1);
        desk.state.addGuest(desk.song(0));
        const Show show = desk.show();
        const int& writes = desk.computer.preferences.writes;
        const int writesBefore = writes;
        edit(desk.state, show.songs[0].id, show.songs[0].guests[0].id);
        CHECK(desk.show() != show);
        CHECK(writes == writesBefore + 1);
        CHECK(desk.isStored());

        desk.state.deleteShow(show.id);
        desk.state.importShow(show);
        desk.state.setActiveShowId(std::nullopt);
        const int writesOfBoth = writes;
        edit(desk.state, show.songs[0].id, show.songs[0].guests[0].id);
        CHECK(desk.state.shows() == std::vector{show});
        CHECK(writes == writesOfBoth);
    }
}

TEST_CASE("ids that nothing has and empty names change nothing") {
    Desk desk("ABC", 1);
    desk.state.addGuest(desk.song(0));
    const Uuid guest = desk.show().songs[0].guests[0].id;
    const std::vector<Show> before = desk.state.shows();
    const std::pair<Uuid, Uuid> pairs[] = {
        {unknown, guest}, {desk.song(0), unknown}, {desk.song(1), guest}};
    for (const auto& [song, artist] : pairs) {
        desk.state.removeGuest(song, artist);
        desk.state.updateGuest(song, artist, "x", "x", "x");
        desk.state.updateGuestVolume(song, artist, "x");
    }
    desk.state.removeSong(unknown);
    desk.state.updateSongTitle(unknown, "x");
    desk.state.addGuest(unknown);
    desk.state.renameActiveShow("");
    desk.state.addSong("");
    desk.state.addMic("");
    desk.state.addIem("");
    CHECK(desk.state.shows() == before);
    CHECK(desk.state.activeSongIndex() == 1);
}
