#include "state/AppState.h"

#include "live/AutoAdvance.h"
#include "live/Countdown.h"
#include "model/ShowEditing.h"
#include "model/ShowJson.h"
#include "platform/Clock.h"
#include "platform/PreferencesStore.h"
#include "timecode/LtcManager.h"

#include <cassert>
#include <cmath>
#include <cstdlib>
#include <ostream>
#include <utility>

namespace tessivo {
namespace {

constexpr char lockedValue[] = "locked";
constexpr char unlockedValue[] = "unlocked";
constexpr char byPositionValue[] = "position";
constexpr char atStartsValue[] = "starts";
/// A move is confirmed by timecode that comes this soon after it and is this close to it, in
/// seconds.
constexpr double confirmationSeconds = 1.0;
/// How far the countdown may be from the timecode before it is set by it, in seconds.
constexpr double toleratedCountdown = 1.0;

StartReader startReader(const LtcManager& manager) {
    return manager.countsThirty() ? anyTimecodeToFrames : timecodeToFrames;
}

}  // namespace

AppState::AppState(const Platform& platform)
    : platform_(platform),
      ltcManager_(std::make_unique<LtcManager>(platform.clock, platform.mainQueue, platform.audio,
                                               platform.log)),
      currentSongStartedAt_(platform.clock.now()),
      nowTick_(platform.clock.now()),
      countdownStart_(platform.clock.moment()),
      updater_(platform.updates),
      choices_(platform.preferences),
      timecodeChoices_(choices_, *ltcManager_) {
    holdsRecord_ = platform.preferences.takeHold();
    keepsShows_ = holdsRecord_;
    load();
    isLocked_ = choices_.get(lockKey) == lockedValue;
    following_ =
        choices_.get(followingKey) == byPositionValue ? Following::byPosition : Following::atStarts;
    // The state owns the manager, the timer and the updater: their callbacks end before it does.
    followTimecode();
    startCountdownTimer();
    updater_.onUpdateAvailable = [this](std::optional<std::string> version) {
        assign(Field::updateAvailable, updateAvailable_, version.has_value());
        assign(Field::latestUpdateVersion, latestUpdateVersion_, std::move(version));
    };
}

AppState::~AppState() = default;

const Show* AppState::showWithId(const std::optional<Uuid>& id) const {
    return id ? firstWithId(shows(), *id) : nullptr;
}

void AppState::setActiveShowId(std::optional<Uuid> id) {
    if (isLocked_ && activeShow()) {
        return;
    }
    assign(Field::activeShowId, activeShowId_, id);
    store();
}

void AppState::setActiveDisplayShowId(std::optional<Uuid> id) {
    assign(Field::activeDisplayShowId, activeDisplayShowId_, id);
}

void AppState::setAutoAdvanceEnabled(bool enabled) {
    assign(Field::autoAdvanceEnabled, autoAdvanceEnabled_, enabled);
}

void AppState::setFollowing(Following following) {
    songPlaying_.reset();
    assign(Field::following, following_, following);
    choices_.set(followingKey,
                 following == Following::byPosition ? byPositionValue : atStartsValue);
}

void AppState::setLocked(bool locked) {
    if (locked != isLocked_) {
        assign(Field::isLocked, isLocked_, locked);
        choices_.set(lockKey, locked ? lockedValue : unlockedValue);
        setKeepsShows(keepsShows_ && platform_.preferences.isKeeping());
    }
}

void AppState::change(Field field, const std::function<void()>& apply) {
    willChange.emit(field);
    apply();
    didChange.emit(field);
}

void AppState::goNext() {
    const Show* show = activeShow();
    if (show && activeSongIndex_ < std::ssize(show->songs)) {
        moveByHand(activeSongIndex_ + 1, MovedBy::key);
    }
}

void AppState::goPrev() {
    if (activeSongIndex_ > 0) {
        moveByHand(activeSongIndex_ - 1, MovedBy::key);
    }
}

void AppState::jumpTo(std::int64_t index) {
    moveByHand(index, MovedBy::click);
}

void AppState::moveByHand(std::int64_t index, MovedBy by) {
    if (index < activeSongIndex_) {
        suspendedUntil_ = platform_.clock.moment() + autoAdvanceSuspension;
    }
    moveCursor(index, by);
}

void AppState::moveCursor(std::int64_t index, MovedBy by, double secondsAgo) {
    movedBy_ = by;
    assign(Field::activeSongIndex, activeSongIndex_, index);
    startCountdown(platform_.clock.now() + -secondsAgo);
    save();
}

void AppState::startCountdown(Instant startedAt) {
    assign(Field::currentSongStartedAt, currentSongStartedAt_, startedAt);
    countdownStart_ = platform_.clock.moment() + (startedAt - platform_.clock.now());
    tick();
}

void AppState::followTimecode() {
    ltcManager_->onFrameDecoded = [this](std::int64_t totalFrames, std::int64_t fps) {
        if (following_ == Following::atStarts) {
            checkLtcAutoAdvance(totalFrames, fps);
        }
    };
    ltcManager_->onFrameConfirmed = [this](std::int64_t totalFrames, std::int64_t fps) {
        if (following_ == Following::byPosition) {
            followPosition(totalFrames, fps);
        }
        if (unconfirmedMove_ && std::abs(totalFrames - *unconfirmedMove_) <= fps) {
            unconfirmedMove_.reset();
        }
    };
    captureFollower_ = ltcManager_->didChange.subscribe([this](LtcManager::Field field) {
        if (field == LtcManager::Field::isCapturing && hasMovedUnconfirmed_) {
            assign(Field::hasMovedUnconfirmed, hasMovedUnconfirmed_, false);
        }
    });
}

bool AppState::mayAutoAdvance() const {
    return autoAdvanceEnabled_ && platform_.clock.moment() >= suspendedUntil_ && activeShow();
}

void AppState::tellAdvance(std::size_t song) {
    platform_.log << "LTC: ✅ avance vers morceau " << song << " '"
                  << activeShow()->songs[song].title << "'" << std::endl;
}

void AppState::checkLtcAutoAdvance(std::int64_t totalFrames, std::int64_t fps) {
    if (!mayAutoAdvance()) {
        return;
    }
    if (const auto song = songTriggeredBy(*activeShow(), activeSongIndex_, totalFrames, fps,
                                          startReader(*ltcManager_))) {
        tellAdvance(*song);
        unconfirmedMove_ = totalFrames;
        moveCursor(static_cast<std::int64_t>(*song), MovedBy::timecode);
    }
}

void AppState::followPosition(std::int64_t totalFrames, std::int64_t fps) {
    if (!mayAutoAdvance()) {
        return;
    }
    const auto playing = songPlayingAt(*activeShow(), totalFrames, fps, startReader(*ltcManager_));
    const auto song = playing ? std::optional(activeShow()->songs[playing->song].id) : std::nullopt;
    const bool hasChanged = std::exchange(songPlaying_, song) != song;
    if (!playing) {
        return;
    }
    const auto index = static_cast<std::int64_t>(playing->song);
    const double countdownIsOff =
        std::abs(platform_.clock.moment() - countdownStart_ - playing->seconds);
    const bool isLocatedWithin = index == activeSongIndex_ && countdownIsOff > toleratedCountdown &&
                                 (hasChanged || movedBy_ == MovedBy::timecode);
    if (index != activeSongIndex_ && hasChanged) {
        tellAdvance(playing->song);
        moveCursor(index, MovedBy::timecode, playing->seconds);
    } else if (isLocatedWithin) {
        moveCursor(index, MovedBy::timecode, playing->seconds);
    }
}

void AppState::judgeMove() {
    if (unconfirmedMove_ && platform_.clock.moment() - countdownStart_ >= confirmationSeconds) {
        unconfirmedMove_.reset();
        assign(Field::hasMovedUnconfirmed, hasMovedUnconfirmed_, true);
    }
}

std::optional<std::int64_t> AppState::currentSongRemainingSeconds() const {
    return remainingSeconds(activeShow(), activeSongIndex_, countdownElapsed_);
}

void AppState::startCountdownTimer() {
    countdownTimer_ = platform_.mainQueue.repeatEvery(1.0, [this] {
        tick();
        judgeMove();
        goOnKeeping();
    });
}

// The two instants can't tell how long the song has played: a clock may have been set in between.
void AppState::tick() {
    countdownElapsed_ = platform_.clock.moment() - countdownStart_;
    assign(Field::nowTick, nowTick_, platform_.clock.now());
}

void AppState::load() {
    const std::optional<std::string> bytes = platform_.preferences.data(storageKey);
    std::optional<PersistedData> data = bytes ? decodePersistedData(*bytes) : PersistedData();
    storedRecordIsUnreadable_ = !data;
    // Which show was active isn't restored: the operator opens one after each start.
    library_ = ShowLibrary(data ? std::move(data->shows) : std::vector<Show>());
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
        platform_.preferences.setData(storageKey, library_.record(activeShowId_, activeSongIndex_));
    }
    setKeepsShows(mayReplace && platform_.preferences.isKeeping());
}

void AppState::goOnKeeping() {
    if (holdsRecord_) {
        if (!keepsShows_ || !platform_.preferences.isKeeping()) {
            choices_.setAgain();
            store();
        }
    } else if (!recordHasChanged_ && platform_.preferences.takeHold()) {
        holdsRecord_ = true;
        choices_.setAgain();
        change(Field::shows, [&] { change(Field::activeSongIndex, [&] { load(); }); });
        if (activeShowId_ && !activeShow()) {
            assign(Field::activeShowId, activeShowId_, std::nullopt);
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
