#include "model/ShowJson.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "state/Resumption.h"
#include "support/Shows.h"
#include "timecode/LtcManager.h"

#include <doctest/doctest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;

namespace {

Show concert() {
    Show show = showWithSongs(3);
    show.name = "Concert";
    show.songs[1].duration = 240;
    return show;
}

/// A computer whose program ends, by itself or not, and is started again.
struct Computer {
    SimulatedPlatform platform;
    Show show = concert();
    std::optional<AppState> state;
    std::optional<Resumption> resumption;

    Computer() { start(); }
    ~Computer() { resumption.reset(); }

    void start() {
        state.emplace(platform);
        resumption.emplace(*state, platform);
    }
    void crash() {
        platform.time.drain();
        const auto left = platform.preferences.values;
        resumption.reset();
        state.reset();
        platform.preferences.values = left;
    }
    void lead() {
        resumption->begin(true);
        state->importShow(show);
        state->jumpTo(1);
    }
    /// The title and the detail of the offer.
    std::string offered() const {
        const auto offer = resumption->offer();
        return offer ? offer->title + " | " + offer->detail : "";
    }
    std::string& kept() { return platform.preferences.values[std::string(Resumption::key)]; }
    /// Replaces the first `from` in what is kept.
    void spoil(const std::string& from, const std::string& to) {
        REQUIRE(kept().find(from) != std::string::npos);
        kept().replace(kept().find(from), from.size(), to);
    }
};

}  // namespace

TEST_CASE_FIXTURE(Computer, "what a crash broke off is offered as it stands by then") {
    constexpr double hour = 3600.0;
    struct Row {
        const char* offered;
        std::function<void()> before;  ///< the crash
        std::function<void()> after;   ///< the crash, and before the next start
    };
    const std::string song = "Reprendre\u00A0: Concert | morceau 2";
    const std::string untouched = song + ", reste 3:57";
    const std::string over = song + ", reste 0:00";
    const std::string unknown = song + ", reste 4:00";
    const auto nothing = [] {};
    const Row rows[] = {
        {untouched.c_str(), nothing, [&] { platform.time.advance(3.0); }},
        {over.c_str(), nothing, [&] { platform.time.advance(11.9 * hour); }},
        {"", nothing, [&] { platform.time.advance(12.1 * hour); }},
        {untouched.c_str(),
         [&] {
             platform.time.advance(24.0 * hour);
             state->jumpTo(1);
         },
         [&] { platform.time.advance(3.0); }},
        {over.c_str(), [&] { platform.time.advance(24.0 * hour); }, nothing},
        {unknown.c_str(), nothing,
         [&] { platform.time.setWallClock(platform.time.now() + -9000.0 * hour); }},
        {unknown.c_str(),
         [&] {
             resumption->leave();
             resumption->begin(true);
         },
         nothing},
        {"Reprendre\u00A0: Concert | morceau 1", [&] { state->goPrev(); }, nothing},
        {"Reprendre\u00A0: Concert | show terminé", [&] { state->jumpTo(3); }, nothing},
        {"Reprendre | morceau 2, reste 4:00", [&] { state->renameActiveShow(" "); }, nothing},
        {"", [&] { state->setActiveShowId(std::nullopt); }, nothing},
        {"", [&] { state->deleteShow(show.id); }, nothing},
        {"", [&] { resumption->leave(); }, nothing},
        {"",
         [&] {
             platform.preferences.isFull = true;
             state->goNext();
             platform.preferences.isFull = false;
             platform.time.advance(1.0);
             resumption->leave();
         },
         nothing},
        {"Reprendre l'affichage | Ce poste suivait le show à distance",
         [&] { resumption->begin(false); }, [&] { platform.time.advance(3.0); }},
        // Another program went on with the record meanwhile.
        {unknown.c_str(), [&] { state->jumpTo(2); },
         [&] {
             platform.time.advance(3.0);
             const AppState other(platform);
             platform.preferences.setData(AppState::storageKey,
                                          encodeJson(PersistedData{other.shows(), {}, 1}));
         }},
        {"", nothing, [&] { kept().resize(kept().size() / 2); }},
        {"", nothing, [&] { kept().clear(); }},
        {unknown.c_str(), nothing, [&] { spoil("{", "{\"lights\":[1],"); }},
        {"", nothing, [&] { spoil("true", "\"as the second admin\""); }},
    };
    for (const Row& row : rows) {
        CAPTURE(&row - rows);
        lead();
        row.before();
        crash();
        row.after();
        start();
        CHECK(offered() == row.offered);
        const std::string again = offered();
        resumption->leave();  // a mode that couldn't begin
        crash();              // with the offer on the screen
        start();
        CHECK(offered() == again);
        resumption.reset();
        CHECK_FALSE(platform.preferences.values.contains(Resumption::key));
        platform.preferences.values.clear();
        state.reset();
        start();
    }
}

TEST_CASE_FIXTURE(Computer,
                  "going on brings it all back, also the capture of an input that is late") {
    platform.audio.setDevices({{1, "Micro", {48'000.0, 1}}, {2, "Interface", {48'000.0, 4}}});
    lead();
    LtcManager* timecode = &state->ltcManager();
    timecode->fetchInputDevices();
    platform.time.drain();
    timecode->setSelectedDeviceId(2);
    timecode->setSelectedChannelIndex(3);
    timecode->startCapturing();
    state->setAutoAdvanceEnabled(false);
    state->setActiveDisplayShowId(show.id);
    state->setLocked(true);
    const WindowPlace stage{"display", "HDMI-1", true};
    resumption->setPlace({"display", "HDMI-1", false});
    resumption->setPlace({"passages", "HDMI-1", false});
    resumption->setPlace(stage);
    resumption->removePlace("passages");
    for (int round = 0; round < 2; ++round) {  // what was brought back can be brought back again
        crash();
        platform.audio.setDevices({});
        platform.time.advance(60.0);
        start();
        CHECK(resumption->goOn() == std::vector{stage});
        if (round == 1) {
            crash();  // in between
            start();
            resumption->goOn();
        }
        resumption->begin(true);
        resumption->setPlace(stage);
        platform.time.advance(1.0);
        CHECK(state->activeShowId() == show.id);
        CHECK(state->activeSongIndex() == 1);
        CHECK(state->currentSongRemainingSeconds() == 240 - 61);
        CHECK_FALSE(state->autoAdvanceEnabled());
        CHECK(state->activeDisplayShowId() == show.id);
        timecode = &state->ltcManager();
        CHECK(timecode->isCapturing());
        CHECK(timecode->lastError() == "Plus de son reçu de « Interface ».");

        platform.audio.setDevices({{7, "Interface", {48'000.0, 4}}});
        platform.audio.setFailure(AudioFailure{AudioStep::start, -1});  // its old process has it
        platform.time.advance(3.0);
        CHECK_FALSE(platform.audio.openDevice());
        platform.audio.setFailure(std::nullopt);
        platform.time.advance(1.0);
        CHECK(platform.audio.openDevice() == 7);
        CHECK(timecode->selectedChannelIndex() == 3);
        platform.audio.deliver(std::vector(4, std::vector<float>(512)));
        platform.time.drain();
        CHECK(timecode->lastError() == std::nullopt);
        state->jumpTo(1);
    }
    timecode->stopCapturing();
    crash();
    platform.audio.setDevices({});
    start();
    resumption->goOn();
    CHECK_FALSE(state->ltcManager().isCapturing());
    state->ltcManager().resumeCapturing("Interface");
    platform.audio.setUnreadable();
    platform.time.advance(1.5);
    platform.audio.setDevices({{7, "Interface", {48'000.0, 4}}});
    platform.audio.setUnreadable(false);
    platform.time.advance(1.0);
    CHECK(platform.audio.openDevice() == 7);
    state->ltcManager().stopCapturing();
    state->ltcManager().resumeCapturing("Interface");
    state->ltcManager().stopCapturing();
    platform.time.advance(5.0);  // the operator's stop holds
    CHECK_FALSE(platform.audio.openDevice());
}

TEST_CASE_FIXTURE(Computer, "only the program that holds the record keeps and offers") {
    lead();
    crash();
    SimulatedPlatform second;
    second.preferences.values = platform.preferences.values;
    second.preferences.isHeldElsewhere = true;
    {
        AppState other(second);
        Resumption there(other, second);
        CHECK_FALSE(there.offer());
        there.begin(false);
        there.leave();
    }
    CHECK(second.preferences.values == platform.preferences.values);
    AppState other(second);
    const Resumption there(other, second);
    second.preferences.isHeldElsewhere = false;  // the first has crashed
    second.time.advance(1.0);
    CHECK(there.offer().has_value());
}
