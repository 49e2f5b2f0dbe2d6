#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"

#include <doctest/doctest.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

std::string& storedRecord(SimulatedPlatform& computer) {
    return computer.preferences.values[std::string(AppState::storageKey)];
}

Show namedShow(const char* name) {
    Show show = showWithSongs(2);
    show.name = name;
    return show;
}

}  // namespace

TEST_CASE("a record that can't be read starts empty and is kept before it is replaced") {
    for (const char* bytes : {"", "{", R"({"shows":[]})", "\xFF\xFE"}) {
        CAPTURE(bytes);
        SimulatedPlatform computer;
        storedRecord(computer) = bytes;
        AppState state(computer);
        CHECK(state.shows().empty());
        CHECK(storedRecord(computer) == bytes);
        CHECK(state.keepsShows());

        computer.preferences.refusesToSetAside = true;
        state.importShow(namedShow("Un"));
        CHECK(storedRecord(computer) == bytes);
        CHECK_FALSE(state.keepsShows());

        computer.preferences.refusesToSetAside = false;
        computer.time.advance(1.0);
        CHECK(state.keepsShows());
        state.goNext();
        REQUIRE(computer.preferences.valuesSetAside.size() == 1);
        CHECK(computer.preferences.valuesSetAside.front() == bytes);
        CHECK(decodePersistedData(storedRecord(computer))->shows == state.shows());
    }
}

TEST_CASE("what can't be written is told, and tried again each second until it is") {
    SimulatedPlatform computer;
    AppState state(computer);
    std::vector<bool> told;
    const auto subscription = state.didChange.subscribe([&](AppState::Field field) {
        if (field == AppState::Field::keepsShows) {
            told.push_back(state.keepsShows());
        }
    });
    computer.preferences.isFull = true;
    state.importShow(namedShow("Un"));
    CHECK_FALSE(state.keepsShows());
    computer.time.advance(2.0);
    CHECK(computer.preferences.writes == 0);
    computer.preferences.isFull = false;
    computer.time.advance(5.0);
    CHECK(computer.preferences.writes == 1);
    CHECK(decodePersistedData(storedRecord(computer))->shows == state.shows());
    CHECK(told == std::vector{false, true});
}

TEST_CASE("a record that is let go is taken over and read anew, unless it was changed here") {
    const Show first = namedShow("Un");
    const Show second = namedShow("Deux");
    const Show third = namedShow("Trois");
    const struct {
        const char* what;
        std::function<void(AppState&)> act;
        bool takesOver;
        std::optional<Uuid> active;
    } table[] = {
        {"nothing", [](AppState&) {}, true, {}},
        {"opened", [&](AppState& state) { state.setActiveShowId(second.id); }, true, second.id},
        {"opened and gone", [&](AppState& state) { state.setActiveShowId(first.id); }, true, {}},
        {"cursor", [](AppState& state) { state.jumpTo(1); }, false, {}},
        {"shows", [&](AppState& state) { state.deleteShow(first.id); }, false, {}},
    };
    for (const auto& row : table) {
        CAPTURE(row.what);
        SimulatedPlatform computer;
        storedRecord(computer) = encodeJson(PersistedData{{first, second}, {}, 0});
        computer.preferences.isHeldElsewhere = true;
        AppState state(computer);
        CHECK_FALSE(state.keepsShows());
        CHECK(state.shows().size() == 2);
        row.act(state);
        state.choices().set("chosen", "here");
        const std::string others = encodeJson(PersistedData{{second, third}, {}, 2});
        storedRecord(computer) = others;
        computer.time.advance(2.0);
        CHECK_FALSE(state.keepsShows());

        std::set<AppState::Field> told;
        auto subscription = state.didChange.subscribe([&](AppState::Field field) {
            told.insert(field);
            if (row.takesOver) {  // never new shows under the old cursor
                CHECK((state.shows().size() == 2 && state.shows()[1] == third) ==
                      (state.activeSongIndex() == 2));
            }
        });
        computer.preferences.isHeldElsewhere = false;
        computer.time.advance(2.0);
        CHECK(state.keepsShows() == row.takesOver);
        CHECK(computer.preferences.values.contains("chosen") == row.takesOver);
        for (const auto field : {AppState::Field::shows, AppState::Field::activeSongIndex,
                                 AppState::Field::keepsShows}) {
            CHECK(told.contains(field) == row.takesOver);
        }
        CHECK(storedRecord(computer) == others);
        if (row.takesOver) {
            CHECK(state.shows() == std::vector{second, third});
            CHECK(state.activeShowId() == row.active);
        }
        subscription.reset();
        state.jumpTo(7);
        const bool isStored = decodePersistedData(storedRecord(computer))->activeSongIndex == 7;
        CHECK(isStored == row.takesOver);
    }
}

TEST_CASE("save asks once for a place, then writes there without asking") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.saveCurrentShow();
    CHECK(computer.panels.saveRequests.empty());

    state.importShow(namedShow("Olympia"));
    state.saveCurrentShow();  // cancelled
    CHECK(computer.files.contents.empty());

    computer.panels.answers = {"/a.tessivo"};
    state.saveCurrentShow();
    REQUIRE(computer.panels.saveRequests.size() == 2);
    CHECK(computer.panels.saveRequests.back().title == "Enregistrer le show");
    CHECK(computer.panels.saveRequests.back().proposedName == "Olympia.tessivo");
    CHECK(decodeShow(computer.files.contents["/a.tessivo"]) == *state.activeShow());

    computer.files.contents.clear();
    state.saveCurrentShow();
    CHECK(computer.panels.saveRequests.size() == 2);
    CHECK(computer.files.contents.contains("/a.tessivo"));

    // The place is remembered even when the write failed: the next save tries it again.
    computer.files.isFull = true;
    computer.panels.answers = {"/b.tessivo"};
    state.saveCurrentShowAs();
    CHECK_FALSE(computer.files.contents.contains("/b.tessivo"));
    computer.files.isFull = false;
    state.saveCurrentShow();
    CHECK(computer.files.contents.contains("/b.tessivo"));
}

TEST_CASE("opening a file replaces the show with its id in place, or appends it") {
    SimulatedPlatform computer;
    AppState state(computer);
    for (const char* name : {"Un", "Deux"}) {
        state.importShow(namedShow(name));
    }
    Show second = state.shows()[1];
    state.importShow(second);  // a twin, which stays as it is
    state.goNext();
    second.name = "Deux bis";
    const Show fourth = namedShow("Quatre");
    computer.files.contents = {{"/2.tessivo", encodeJson(second)},
                               {"/4.tessivo", encodeJson(fourth)}};

    computer.panels.answers = {"/2.tessivo"};
    state.openShow();
    CHECK(computer.panels.openRequests.front().title == "Ouvrir un show");
    REQUIRE(state.shows().size() == 3);
    CHECK(state.shows()[1] == second);
    CHECK(state.shows()[2].name == "Deux");
    CHECK(state.activeShowId() == second.id);
    CHECK(state.activeSongIndex() == 0);
    CHECK(decodePersistedData(storedRecord(computer))->activeShowId == second.id);

    computer.panels.answers = {"/4.tessivo"};
    state.openShow();
    REQUIRE(state.shows().size() == 4);
    CHECK(state.shows()[3] == fourth);

    // Saving goes back to the file it came from.
    computer.files.contents.clear();
    state.saveCurrentShow();
    CHECK(computer.panels.saveRequests.empty());
    CHECK(decodeShow(computer.files.contents["/4.tessivo"]) == fourth);
}

TEST_CASE("a file that is no show changes nothing") {
    SimulatedPlatform computer;
    AppState state(computer);
    state.importShow(namedShow("Un"));
    state.goNext();
    const std::vector<Show> before = state.shows();
    const std::string whole = encodeJson(before.front());
    computer.files.contents = {
        {"empty", ""},
        {"truncated", whole.substr(0, whole.size() - 1)},
        {"huge", whole + std::string((32U << 20U) + 1 - whole.size(), ' ')},
    };
    for (const std::string location : {"empty", "truncated", "missing", "huge"}) {
        CAPTURE(location);
        CHECK_FALSE(state.lastFileError().has_value());
        computer.panels.answers = {location};
        state.openShow();
        state.openShow();  // cancelled
        CHECK(state.shows() == before);
        CHECK(state.activeSongIndex() == 1);
    }
    CHECK(state.lastFileError() ==
          "Ce fichier n'est pas ouvert\u00A0: il dépasse les 32 Mo qu'un show peut prendre.");
    computer.files.contents["huge"].pop_back();
    computer.panels.answers = {"huge"};
    state.openShow();
    CHECK(state.activeSongIndex() == 0);
}

TEST_CASE("a show that couldn't be opened again isn't written, and that is told each time") {
    SimulatedPlatform computer;
    AppState state(computer);
    Show show = namedShow("Un");
    show.songs[0].title.append((32U << 20U) - encodeJson(show).size(), 'x');
    state.importShow(show);
    computer.panels.answers = {"/a.tessivo"};
    int told = 0;
    const auto subscription = state.didChange.subscribe(
        [&](AppState::Field field) { told += field == AppState::Field::lastFileError ? 1 : 0; });
    for (const int times : {0, 1, 2}) {
        state.saveCurrentShow();
        CHECK(told == times);
        CHECK(computer.files.contents["/a.tessivo"].empty() == (told > 0));
        computer.files.contents.clear();
        state.addMic("x");
    }
    CHECK(state.lastFileError() ==
          "Ce show n'est pas enregistré\u00A0: il dépasse les 32 Mo d'un fichier qui peut être "
          "rouvert.");
}

TEST_CASE("only a version newer than this one is an update") {
    const std::pair<std::optional<std::string>, bool> rows[] = {
        {std::nullopt, false}, {"0.70.0", false}, {"0.69.9", false},
        {"0.70.1", true},      {"0.100", true},   {"1", true},
        {"", false},           {"v9", false},     {"9.", false}};
    for (const auto& row : rows) {
        CAPTURE(row.first.value_or("none"));
        const auto& [published, isUpdate] = row;
        SimulatedPlatform computer;
        computer.updates.latestVersion = published;
        AppState state(computer);
        bool told = false;
        const auto subscription = state.didChange.subscribe([&](AppState::Field field) {
            told = told || field == AppState::Field::latestUpdateVersion;
        });
        state.updater().checkForUpdateInformation();
        computer.time.drain();
        CHECK(told);
        CHECK(state.updater().hasFailed() == !published);
        CHECK(state.updateAvailable() == isUpdate);
        CHECK(state.latestUpdateVersion() == (isUpdate ? published : std::nullopt));
    }
}
