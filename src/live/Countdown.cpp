#include "live/Countdown.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace tessivo {
namespace {

std::int64_t wholeSeconds(double seconds) {
    constexpr double limit = 9.2e18;  // just inside the range of a signed 64-bit integer
    if (std::isnan(seconds)) {
        return 0;
    }
    return static_cast<std::int64_t>(std::clamp(seconds, -limit, limit));
}

}  // namespace

std::optional<std::int64_t> remainingSeconds(const Show* show, std::int64_t songIndex,
                                             double elapsedSeconds) {
    const Song* song = songAt(show, songIndex);
    if (!song || !song->duration) {
        return std::nullopt;
    }
    const std::int64_t duration = *song->duration;
    const std::int64_t elapsed = wholeSeconds(elapsedSeconds);
    assert(elapsed > std::numeric_limits<std::int64_t>::min());  // or -elapsed had no value
    if (duration <= elapsed) {
        return 0;
    }
    if (elapsed < 0 && duration > std::numeric_limits<std::int64_t>::max() + elapsed) {
        return std::numeric_limits<std::int64_t>::max();
    }
    // A negative length can still exceed a negative elapsed time after the clock went back.
    return std::max<std::int64_t>(duration - elapsed, 0);
}

}  // namespace tessivo
