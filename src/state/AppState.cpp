#include "state/AppState.h"

#include "model/ShowJson.h"
#include "platform/Clock.h"
#include "platform/PreferencesStore.h"

#include <algorithm>
#include <utility>

namespace tessivo {

AppState::AppState(const Platform& platform)
    : platform_(platform),
      ltcManager_(platform.clock, platform.mainQueue, platform.audio),
      currentSongStartedAt_(platform.clock.now()),
      nowTick_(platform.clock.now()),
      updater_(platform.updates) {
    holdsRecord_ = platform.preferences.takeHold();
    keepsShows_ = holdsRecord_;
    load();
    // The state owns the manager, the timer and the updater: their callbacks end before it does.
    ltcManager_.onFrameDecoded = [this](std::int64_t totalFrames, std::int64_t fps) {
        checkLtcAutoAdvance(totalFrames, fps);
    };
    startCountdownTimer();
    updater_.onUpdateAvailable = [this](std::optional<std::string> version) {
        assign(Field::updateAvailable, updateAvailable_, version.has_value());
        assign(Field::latestUpdateVersion, latestUpdateVersion_, std::move(version));
    };
}

const Show* AppState::showWithId(const std::optional<Uuid>& id) const {
    if (!id) {
        return nullptr;
    }
    const auto found = std::find_if(shows_.begin(), shows_.end(),
                                    [&](const Show& show) { return show.id == *id; });
    return found == shows_.end() ? nullptr : &*found;
}

void AppState::setActiveShowId(std::optional<Uuid> id) {
    assign(Field::activeShowId, activeShowId_, std::move(id));
    store();
}

void AppState::setActiveDisplayShowId(std::optional<Uuid> id) {
    assign(Field::activeDisplayShowId, activeDisplayShowId_, std::move(id));
}

void AppState::setAutoAdvanceEnabled(bool enabled) {
    assign(Field::autoAdvanceEnabled, autoAdvanceEnabled_, enabled);
}

void AppState::load() {
    const std::optional<std::string> bytes = platform_.preferences.data(storageKey);
    std::optional<PersistedData> data = bytes ? decodePersistedData(*bytes) : PersistedData();
    storedRecordIsUnreadable_ = !data;
    // Which show was active isn't restored: the operator opens one after each start.
    shows_ = data ? std::move(data->shows) : std::vector<Show>();
    activeSongIndex_ = data ? data->activeSongIndex : 0;
}

void AppState::save() {
    recordHasChanged_ = true;
    store();
}

void AppState::store() {
    // Rather keep bytes that might be somebody's shows.
    const bool mayReplace =
        !storedRecordIsUnreadable_ || platform_.preferences.setAside(storageKey);
    if (mayReplace) {
        storedRecordIsUnreadable_ = false;
        recordBytes_ =
            encodePersistedJson(shows_, activeShowId_, activeSongIndex_, std::move(recordBytes_));
        platform_.preferences.setData(storageKey, recordBytes_);
    }
    setKeepsShows(mayReplace && platform_.preferences.isKeeping());
}

void AppState::goOnKeeping() {
    if (holdsRecord_) {
        if (!keepsShows_ || !platform_.preferences.isKeeping()) {
            store();
        }
    } else if (!recordHasChanged_ && platform_.preferences.takeHold()) {
        holdsRecord_ = true;
        change(Field::shows, [&] { change(Field::activeSongIndex, [&] { load(); }); });
        if (activeShowId_ && !activeShow()) {
            assign<std::optional<Uuid>>(Field::activeShowId, activeShowId_, std::nullopt);
        }
        setKeepsShows(platform_.preferences.isKeeping());
    }
}

void AppState::setKeepsShows(bool keeps) {
    if (keeps != keepsShows_) {
        assign(Field::keepsShows, keepsShows_, keeps);
    }
}

}  // namespace tessivo
