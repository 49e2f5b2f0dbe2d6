#pragma once

#include "model/Show.h"

#include <cstdint>
#include <optional>

namespace tessivo {

/// Whole seconds left in the song under the cursor, never negative: a song that runs over shows 0.
/// None when there is no such song or it has no length. The elapsed time is cut to whole seconds
/// first, so the value equals the full length until one whole second has passed. They count from
/// the song's start and may have any value; what isn't a number counts as no time.
std::optional<std::int64_t> remainingSeconds(const Show* show, std::int64_t songIndex,
                                             double elapsedSeconds);

/// From this many seconds on, the next song is announced.
constexpr std::int64_t urgentSeconds = 10;

constexpr bool isUrgent(std::optional<std::int64_t> remaining) {
    return remaining && *remaining <= urgentSeconds;
}

}  // namespace tessivo
