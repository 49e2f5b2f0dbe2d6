#pragma once

#include "base/Signal.h"
#include "platform/Turns.h"
#include "sync/AdminClock.h"
#include "sync/ReceiverClient.h"

#include <optional>
#include <string>

namespace tessivo {

class Clock;

/// What a display station knows of the show: the last live state that it heard, also when the
/// admin has gone since, how old that is, and what time it is at the admin's. It follows an admin
/// from its creation to its end. Main thread only.
class FollowedShow {
public:
    enum class Field { state, silence };

    /// From so many seconds without a live state on, what is shown isn't to be taken for the
    /// present. An admin with an open show tells its state each second.
    static constexpr double silenceLimit = 3.0;
    /// How long a connected admin may say nothing before it may be left, in seconds.
    static constexpr double patience = 10.0;
    /// How long the last state is kept once the admin is lost, in seconds.
    static constexpr double keepingTime = 12.0 * 3600.0;

    /// What is given here outlives this.
    FollowedShow(Network& network, const Clock& clock, MainQueue& mainQueue,
                 Background& background);
    FollowedShow(const FollowedShow&) = delete;
    FollowedShow& operator=(const FollowedShow&) = delete;

    /// Emitted after each change of the connection or the state, and each second of a silence.
    Signal<Field> didChange;

    ReceiverStatus status() const { return client_.status(); }
    /// Whether the admin that is connected has told its state.
    bool isFollowing() const { return client_.liveState().has_value(); }
    /// The last state, of the admin that is connected or of the one before it; null without any.
    const LiveState* lastState() const;

    /// Seconds since the last state arrived, once they are `silenceLimit` or more.
    std::optional<double> silence() const;
    /// Whether the admin that is connected has let `patience` pass without a state.
    bool isAdminMute() const;

    /// What the admin's clock shows at a moment of the station's; none while that isn't known.
    std::optional<Instant> adminTime(Moment moment) const { return adminClock_.at(moment); }
    /// By how many seconds this computer's clock is ahead of the admin's, or behind when negative.
    std::optional<double> clockLead() const;

private:
    void update(ReceiverClient::Field field);
    void listenFor(double seconds);
    void handleSilence();

    const Clock& clock_;
    Turns silences_;
    std::optional<LiveState> lostState_;
    Moment heardAt_;  // the last state
    Moment connectedAt_;
    std::string adminName_;
    AdminClock adminClock_;  // of that one
    ReceiverClient client_;
    Subscription subscription_;
};

}  // namespace tessivo
