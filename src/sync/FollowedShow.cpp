#include "sync/FollowedShow.h"

#include "platform/Clock.h"

#include <algorithm>
#include <utility>

namespace tessivo {

FollowedShow::FollowedShow(Network& network, const Clock& clock, MainQueue& mainQueue,
                           Background& background)
    : clock_(clock),
      silences_(mainQueue),
      client_(network, mainQueue, background),
      subscription_(
          client_.didChange.subscribe([this](ReceiverClient::Field field) { update(field); })) {
    client_.start();
}

const LiveState* FollowedShow::lastState() const {
    const auto& state = isFollowing() ? client_.liveState() : lostState_;
    return state ? &*state : nullptr;
}

std::optional<double> FollowedShow::silence() const {
    const double seconds = clock_.moment() - heardAt_;
    return lastState() && seconds >= silenceLimit ? std::optional(seconds) : std::nullopt;
}

bool FollowedShow::isAdminMute() const {
    return status() == ReceiverStatus::connected &&
           clock_.moment() - std::max(heardAt_, connectedAt_) >= patience;
}

std::optional<double> FollowedShow::clockLead() const {
    const auto theirs = adminTime(clock_.moment());
    return theirs ? std::optional(clock_.now() - *theirs) : std::nullopt;
}

void FollowedShow::update(ReceiverClient::Field field) {
    if (field == ReceiverClient::Field::status) {
        connectedAt_ = clock_.moment();
        adminClock_.reconnect();
        if (std::exchange(adminName_, client_.adminName()) != client_.adminName()) {
            adminClock_ = {};
        }
    } else if (isFollowing()) {
        heardAt_ = clock_.moment();
        adminClock_.hear(lastState()->currentSongStartedAt, heardAt_);
        lostState_.reset();
    } else if (auto lost = client_.takeLostState()) {
        lostState_ = std::move(lost);
    }
    listenFor(silenceLimit);
    didChange.emit(Field::state);
}

void FollowedShow::listenFor(double seconds) {
    silences_.callOff();
    silences_.postAfter(seconds, [this] { handleSilence(); });
}

void FollowedShow::handleSilence() {
    listenFor(1.0);
    if (!isFollowing() && clock_.moment() - heardAt_ >= keepingTime && lostState_) {
        lostState_.reset();
        didChange.emit(Field::state);
    } else {
        didChange.emit(Field::silence);
    }
}

}  // namespace tessivo
