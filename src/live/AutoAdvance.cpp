#include "live/AutoAdvance.h"

#include "live/StartTimecode.h"

namespace tessivo {
namespace {

bool isInTriggerSpan(std::int64_t start, std::int64_t totalFrames, std::int64_t fps) {
    if (totalFrames < start || fps <= 0) {
        return false;
    }
    // Unsigned: the distance of two signed values may exceed the signed range.
    const auto distance =
        static_cast<std::uint64_t>(totalFrames) - static_cast<std::uint64_t>(start);
    return distance < static_cast<std::uint64_t>(fps);
}

}  // namespace

std::optional<std::size_t> songTriggeredBy(const Show& show, std::int64_t currentSongIndex,
                                           std::int64_t totalFrames, std::int64_t fps) {
    for (std::size_t i = 0; i < show.songs.size(); ++i) {
        const Song& song = show.songs[i];
        if (!song.ltcTimecode || static_cast<std::int64_t>(i) == currentSongIndex) {
            continue;
        }
        const auto start = timecodeToFrames(*song.ltcTimecode, fps);
        if (start && isInTriggerSpan(*start, totalFrames, fps)) {
            return i;
        }
    }
    return std::nullopt;
}

}  // namespace tessivo
