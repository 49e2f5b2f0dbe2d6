#include "live/AutoAdvance.h"

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
                                           std::int64_t totalFrames, std::int64_t fps,
                                           StartReader readStart) {
    for (std::size_t i = 0; i < show.songs.size(); ++i) {
        const Song& song = show.songs[i];
        if (!song.ltcTimecode || static_cast<std::int64_t>(i) == currentSongIndex) {
            continue;
        }
        const auto start = readStart(*song.ltcTimecode, fps);
        if (start && isInTriggerSpan(*start, totalFrames, fps)) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<SongPosition> songPlayingAt(const Show& show, std::int64_t totalFrames,
                                          std::int64_t fps, StartReader readStart) {
    std::optional<SongPosition> playing;
    std::int64_t latestStart = -1;  // an earlier one is no time of day
    for (std::size_t i = 0; i < show.songs.size(); ++i) {
        const Song& song = show.songs[i];
        const auto start = song.ltcTimecode ? readStart(*song.ltcTimecode, fps) : std::nullopt;
        if (start && *start > latestStart && *start <= totalFrames) {
            latestStart = *start;
            playing = {i, static_cast<double>(totalFrames - *start) / static_cast<double>(fps)};
        }
    }
    const bool isOver =
        playing && show.songs[playing->song].duration &&
        playing->seconds >= static_cast<double>(*show.songs[playing->song].duration);
    return isOver ? std::nullopt : playing;
}

}  // namespace tessivo
