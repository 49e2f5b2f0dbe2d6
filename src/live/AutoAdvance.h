#pragma once

#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tessivo {

/// The song that incoming timecode moves the cursor to: the first one in setlist order, other than
/// the current one, whose trigger span holds the frame. The trigger span is the first second (`fps`
/// frames) from the song's start timecode. `totalFrames` is a time of day in frames.
std::optional<std::size_t> songTriggeredBy(const Show& show, std::int64_t currentSongIndex,
                                           std::int64_t totalFrames, std::int64_t fps);

}  // namespace tessivo
