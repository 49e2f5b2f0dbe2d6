#include "display/ReceiverViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "live/Countdown.h"
#include "platform/Clock.h"

namespace tessivo {

ReceiverViewModel::ReceiverViewModel(QObject* parent) : QObject(parent) {}

ReceiverViewModel::~ReceiverViewModel() {
    if (tick_) {
        setFollowing(false);
    }
}

void ReceiverViewModel::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    client_.emplace(context_->platform.network);
    subscription_ = client_->didChange.subscribe([this](ReceiverClient::Field) { update(); });
    client_->start();
}

PassagesContent* ReceiverViewModel::passages() {
    if (!passages_) {
        passages_.emplace();
        presentPassages();
    }
    return &*passages_;
}

void ReceiverViewModel::update() {
    Status status = Searching;
    if (client_->status() == ReceiverStatus::connected) {
        status = client_->liveState() ? Following : Waiting;
    }
    if ((status == Following) != (tick_ != nullptr)) {
        setFollowing(status == Following);
    }
    if (status == Following) {
        const LiveState& state = *client_->liveState();
        content_.presentShow(&state.show, state.activeSongIndex);
        presentRemaining();
    }
    if (passages_) {
        presentPassages();
    }
    if (status != status_) {
        status_ = status;
        Q_EMIT statusChanged();
    }
}

void ReceiverViewModel::presentPassages() {
    const auto& state = client_->liveState();
    passages_->presentShow(state ? &state->show : nullptr);
    passages_->presentCursor(state ? state->activeSongIndex : 0);
}

void ReceiverViewModel::setFollowing(bool following) {
    const Platform& platform = context_->platform;
    context_->keepAwake(this, following);
    if (!following) {
        tick_.reset();
        return;
    }
    now_ = platform.clock.now();
    tick_ = platform.mainQueue.repeatEvery(1.0, [this] {
        now_ = context_->platform.clock.now();
        presentRemaining();
    });
}

void ReceiverViewModel::presentRemaining() {
    const LiveState& state = *client_->liveState();
    content_.presentRemaining(
        remainingSeconds(&state.show, state.activeSongIndex, now_ - state.currentSongStartedAt));
}

}  // namespace tessivo
