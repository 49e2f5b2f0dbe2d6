#pragma once

#include "base/Instant.h"
#include "model/Show.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// All that an admin tells a display station: one snapshot, complete in itself. What else a station
/// shows it works out from the last one and its own clock. Nothing compares two of them; each
/// replaces the one before.
struct LiveState {
    Show show;  ///< the active show, whole
    /// The live cursor as the admin holds it: a position in `show.songs`, or any other value.
    std::int64_t activeSongIndex = 0;
    Instant currentSongStartedAt;  ///< when the countdown of the current song started
};

/// The JSON form: one compact object whose members carry the field names, the instant as seconds
/// since 2001-01-01 00:00:00 UTC. Encoding cannot fail.
std::string encodeJson(const LiveState& state);

/// The whole state or nothing, under the rules of `decodeShow`; all three members are required. One
/// of millions of labels, more than songs could be in as many bytes, is nothing.
std::optional<LiveState> decodeLiveState(std::string_view json);

}  // namespace tessivo
