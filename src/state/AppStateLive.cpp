#include "live/AutoAdvance.h"
#include "live/Countdown.h"
#include "platform/Clock.h"
#include "state/AppState.h"

#include <ostream>

namespace tessivo {

void AppState::goNext() {
    const Show* show = activeShow();
    if (!show || activeSongIndex_ >= static_cast<std::int64_t>(show->songs.size())) {
        return;
    }
    assign(Field::activeSongIndex, activeSongIndex_, activeSongIndex_ + 1);
    restartCountdown();
    save();
}

void AppState::goPrev() {
    if (activeSongIndex_ <= 0) {
        return;
    }
    assign(Field::activeSongIndex, activeSongIndex_, activeSongIndex_ - 1);
    suspendAutoAdvance();
    restartCountdown();
    save();
}

void AppState::jumpTo(std::int64_t index) {
    if (index < activeSongIndex_) {
        suspendAutoAdvance();
    }
    assign(Field::activeSongIndex, activeSongIndex_, index);
    restartCountdown();
    save();
}

void AppState::checkLtcAutoAdvance(std::int64_t totalFrames, std::int64_t fps) {
    if (!autoAdvanceEnabled_ || platform_.clock.now() < suspendedUntil_) {
        return;
    }
    const Show* show = activeShow();
    if (!show) {
        return;
    }
    const auto triggered = songTriggeredBy(*show, activeSongIndex_, totalFrames, fps);
    if (!triggered) {
        return;
    }
    platform_.log << "LTC: ✅ avance vers morceau " << *triggered << " '"
                  << show->songs[*triggered].title << "'" << std::endl;
    assign(Field::activeSongIndex, activeSongIndex_, static_cast<std::int64_t>(*triggered));
    restartCountdown();
    save();
}

std::optional<std::int64_t> AppState::currentSongRemainingSeconds() const {
    return remainingSeconds(activeShow(), activeSongIndex_, currentSongStartedAt_, nowTick_);
}

void AppState::restartCountdown() {
    assign(Field::currentSongStartedAt, currentSongStartedAt_, platform_.clock.now());
    assign(Field::nowTick, nowTick_, platform_.clock.now());
}

void AppState::startCountdownTimer() {
    countdownTimer_ = platform_.mainQueue.repeatEvery(1.0, [this] {
        assign(Field::nowTick, nowTick_, platform_.clock.now());
        goOnKeeping();
    });
}

void AppState::suspendAutoAdvance() {
    suspendedUntil_ = platform_.clock.now() + autoAdvanceSuspension;
}

}  // namespace tessivo
