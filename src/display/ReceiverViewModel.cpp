#include "display/ReceiverViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "live/Countdown.h"
#include "live/Setlist.h"
#include "platform/Clock.h"
#include "state/AppState.h"

#include <cmath>
#include <utility>

namespace tessivo {
namespace {

/// From so many seconds on, whoever compares two screens would see it.
constexpr double tellableClockFault = 2.0;

}  // namespace

ReceiverViewModel::ReceiverViewModel(QObject* parent) : QObject(parent) {}

ReceiverViewModel::~ReceiverViewModel() {
    if (hasPicture_) {
        context_->keepAwake(this, false);
    }
}

void ReceiverViewModel::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    const Platform& platform = context_->platform;
    show_.emplace(platform.network, platform.clock, platform.mainQueue, platform.background);
    subscription_ = show_->didChange.subscribe([this](FollowedShow::Field field) {
        if (field == FollowedShow::Field::state) {
            update();
        }
        updateSilence();
    });
    troubles_ = platform.network.troubleDidChange.subscribe([this] { Q_EMIT troubleChanged(); });
}

PassagesContent* ReceiverViewModel::passages() {
    if (!passages_) {
        passages_.emplace();
        presentPassages();
    }
    return &*passages_;
}

bool ReceiverViewModel::responderIsSilent() const {
    return context_ && context_->platform.network.trouble() == Network::Trouble::responderSilent;
}

bool ReceiverViewModel::hasOtherVersion() const {
    const Show& show = show_->lastState()->show;
    const Show* own = context_->state.showWithId(show.id);
    return own && *own != show;
}

void ReceiverViewModel::prepareTakeOver() {
    // The start as this computer's clock would have shown it.
    const LiveState& last = *show_->lastState();
    context_->goOn = [&state = context_->state, last,
                      startedAt = last.currentSongStartedAt + show_->clockLead().value_or(0.0)] {
        state.takeOver(last.show, last.activeSongIndex, startedAt);
    };
}

void ReceiverViewModel::update() {
    Status status = Searching;
    if (show_->status() == ReceiverStatus::connected) {
        status = show_->isFollowing() ? Following : Waiting;
    }
    const bool isNew = status != status_;
    if (isNew && status == Following) {
        startTick();
    }
    if (const LiveState* state = show_->lastState()) {
        content_.presentShow(&state->show, state->activeSongIndex);
        presentRemaining();
    }
    if (passages_) {
        presentPassages();
    }
    setHasPicture(show_->lastState() != nullptr);
    if (isNew) {
        status_ = status;
        Q_EMIT statusChanged();
    }
}

void ReceiverViewModel::updateSilence() {
    const auto seconds = show_->silence();
    QString silence = seconds ? toQString(timeInWords(*seconds)) : QString();
    if (silence != silence_ || show_->isAdminMute() != adminIsMute_) {
        silence_ = std::move(silence);
        adminIsMute_ = show_->isAdminMute();
        Q_EMIT silenceChanged();
    }
}

void ReceiverViewModel::updateClockFault() {
    const double lead = show_->clockLead().value_or(0.0);
    QString fault;
    if (std::abs(lead) >= tellableClockFault) {
        fault = toQString(timeInWords(std::round(std::abs(lead)))) +
                (lead > 0.0 ? QStringLiteral(" d'avance") : QStringLiteral(" de retard"));
    }
    if (fault != clockFault_) {
        clockFault_ = std::move(fault);
        Q_EMIT clockFaultChanged();
    }
}

void ReceiverViewModel::presentPassages() {
    const LiveState* state = show_->lastState();
    passages_->presentShow(state ? &state->show : nullptr,
                           state ? handOvers(state->show) : HandOvers());
    passages_->presentCursor(state ? state->activeSongIndex : 0);
}

void ReceiverViewModel::setHasPicture(bool hasPicture) {
    if (hasPicture == hasPicture_) {
        return;
    }
    hasPicture_ = hasPicture;
    context_->keepAwake(this, hasPicture);
    if (!hasPicture) {
        tick_.reset();
    }
    Q_EMIT pictureChanged();
}

void ReceiverViewModel::startTick() {
    tick();
    tick_ = context_->platform.mainQueue.repeatEvery(1.0, [this] {
        tick();
        presentRemaining();
    });
}

void ReceiverViewModel::tick() {
    now_ = context_->platform.clock.now();
    moment_ = context_->platform.clock.moment();
    updateClockFault();
}

void ReceiverViewModel::presentRemaining() {
    const LiveState& state = *show_->lastState();
    const Instant now = show_->adminTime(moment_).value_or(now_);
    content_.presentRemaining(
        remainingSeconds(&state.show, state.activeSongIndex, now - state.currentSongStartedAt));
}

}  // namespace tessivo
