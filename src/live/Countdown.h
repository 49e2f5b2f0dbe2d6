#pragma once

#include "base/Instant.h"
#include "model/Show.h"

#include <cstdint>
#include <optional>

namespace tessivo {

/// Whole seconds left in the song under the cursor, never negative: a song that runs over shows 0.
/// None when there is no such song or it has no length. The elapsed time is cut to whole seconds
/// first, so the value equals the full length until one whole second has passed. Instants of any
/// value are accepted; one that isn't a number counts as no time elapsed.
std::optional<std::int64_t> remainingSeconds(const Show* show, std::int64_t songIndex,
                                             Instant startedAt, Instant now);

/// From this many seconds on, the next song is announced.
constexpr std::int64_t urgentSeconds = 10;

constexpr bool isUrgent(std::optional<std::int64_t> remaining) {
    return remaining && *remaining <= urgentSeconds;
}

}  // namespace tessivo
