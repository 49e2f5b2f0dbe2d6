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
    save();
}

void AppState::setActiveDisplayShowId(std::optional<Uuid> id) {
    assign(Field::activeDisplayShowId, activeDisplayShowId_, std::move(id));
}

void AppState::setAutoAdvanceEnabled(bool enabled) {
    assign(Field::autoAdvanceEnabled, autoAdvanceEnabled_, enabled);
}

void AppState::load() {
    const std::optional<std::string> bytes = platform_.preferences.data(storageKey);
    if (!bytes) {
        return;
    }
    std::optional<PersistedData> data = decodePersistedData(*bytes);
    if (!data) {
        storedRecordIsUnreadable_ = true;
        return;
    }
    // Which show was active isn't restored: the operator opens one after each start.
    shows_ = std::move(data->shows);
    activeSongIndex_ = data->activeSongIndex;
}

void AppState::save() {
    if (storedRecordIsUnreadable_) {
        if (!platform_.preferences.setAside(storageKey)) {
            return;  // rather keep bytes that might be somebody's shows
        }
        storedRecordIsUnreadable_ = false;
    }
    recordBytes_ =
        encodePersistedJson(shows_, activeShowId_, activeSongIndex_, std::move(recordBytes_));
    platform_.preferences.setData(storageKey, recordBytes_);
}

}  // namespace tessivo
