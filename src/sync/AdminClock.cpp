#include "sync/AdminClock.h"

namespace tessivo {
namespace {

/// States come each second. After a longer pause they may come late all together, for about as
/// long as it takes to see that they come each second again.
constexpr double longestPause = 2.0;
constexpr double settlingTime = 1.5;

/// How much faster the station's clock may run than the admin's: the best that quartz does in the
/// heat and the cold.
constexpr double drift = 1e-4;
/// A start that seems later than this isn't delayed: the admin's clock was set back. In seconds.
constexpr double longestDelay = 1.0;

}  // namespace

void AdminClock::hear(Instant startedAt, Moment moment) {
    if (moment - heardAt_ > longestPause && lastStart_) {
        promptSince_ = moment + settlingTime;
    }
    heardAt_ = moment;
    const bool isNew = lastStart_ && *lastStart_ != startedAt;
    lastStart_ = startedAt;
    if (isNew) {
        learn(startedAt.secondsSince2001 - moment.seconds, moment);
    }
}

void AdminClock::reconnect() {
    lastStart_.reset();
    promptSince_ = {};
}

std::optional<Instant> AdminClock::at(Moment moment) const {
    return lead_ ? std::optional(Instant{*lead_ + moment.seconds}) : std::nullopt;
}

void AdminClock::learn(double lead, Moment moment) {
    const bool isPrompt = moment >= promptSince_;
    const bool isAhead = lead_ && lead >= *lead_ - drift * (moment - learntAt_);
    const bool wasSetBack = !lead_ || lead < *lead_ - longestDelay;
    if (isAhead || (isPrompt && wasSetBack)) {
        lead_ = lead;
        learntAt_ = moment;
    }
}

}  // namespace tessivo
