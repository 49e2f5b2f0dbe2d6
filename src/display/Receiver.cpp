#include "display/Receiver.h"

#include <QQmlEngine>

#include "display/Application.h"
#include "live/Countdown.h"
#include "platform/Clock.h"

namespace tessivo {

Receiver::Receiver(QObject* parent) : QObject(parent) {}

Receiver::~Receiver() {
    if (tick_) {
        setFollowing(false);
    }
}

void Receiver::componentComplete() {
    application_ = &applicationOf(*qmlEngine(this));
    client_.emplace(application_->platform.network);
    subscription_ = client_->didChange.subscribe([this](ReceiverClient::Field) { update(); });
    client_->start();
}

void Receiver::update() {
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
    if (status != status_) {
        status_ = status;
        Q_EMIT statusChanged();
    }
}

void Receiver::setFollowing(bool following) {
    const Platform& platform = application_->platform;
    application_->keepAwake(this, following);
    if (!following) {
        tick_.reset();
        return;
    }
    now_ = platform.clock.now();
    tick_ = platform.mainQueue.repeatEvery(1.0, [this] {
        now_ = application_->platform.clock.now();
        presentRemaining();
    });
}

void Receiver::presentRemaining() {
    const LiveState& state = *client_->liveState();
    content_.presentRemaining(
        remainingSeconds(&state.show, state.activeSongIndex, state.currentSongStartedAt, now_));
}

}  // namespace tessivo
