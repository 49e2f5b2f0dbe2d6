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

void AdminClock::hear(Instant startedAt, double uptime) {
    if (uptime - heardAt_ > longestPause && lastStart_) {
        promptSince_ = uptime + settlingTime;
    }
    heardAt_ = uptime;
    const bool isNew = lastStart_ && *lastStart_ != startedAt;
    lastStart_ = startedAt;
    if (isNew) {
        learn(startedAt.secondsSince2001 - uptime, uptime);
    }
}

void AdminClock::reconnect() {
    lastStart_.reset();
    promptSince_ = 0.0;
}

std::optional<Instant> AdminClock::at(double uptime) const {
    return lead_ ? std::optional(Instant{*lead_ + uptime}) : std::nullopt;
}

void AdminClock::learn(double lead, double uptime) {
    const bool isPrompt = uptime >= promptSince_;
    const bool isAhead = lead_ && lead >= *lead_ - drift * (uptime - learntAt_);
    const bool wasSetBack = !lead_ || lead < *lead_ - longestDelay;
    if (isAhead || (isPrompt && wasSetBack)) {
        lead_ = lead;
        learntAt_ = uptime;
    }
}

}  // namespace tessivo
