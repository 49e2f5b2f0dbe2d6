#pragma once

#include "live/StartTimecode.h"
#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tessivo {

/// Reads a song's start timecode.
using StartReader = decltype(&timecodeToFrames);

/// The song that incoming timecode moves the cursor to: the first one in setlist order, other than
/// the current one, whose trigger span holds the frame. The trigger span is the first second (`fps`
/// frames) from the song's start timecode. `totalFrames` is a time of day in frames.
std::optional<std::size_t> songTriggeredBy(const Show& show, std::int64_t currentSongIndex,
                                           std::int64_t totalFrames, std::int64_t fps,
                                           StartReader readStart = timecodeToFrames);

/// A song that timecode is in, and how far.
struct SongPosition {
    std::size_t song = 0;
    double seconds = 0.0;  ///< since its start
};

/// The song that the timecode is in: the one with the latest start at or before the frame, unless
/// it has a length and that has passed. Of several with one start, the first in setlist order.
std::optional<SongPosition> songPlayingAt(const Show& show, std::int64_t totalFrames,
                                          std::int64_t fps,
                                          StartReader readStart = timecodeToFrames);

}  // namespace tessivo
