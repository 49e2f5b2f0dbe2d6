#include "live/ShowClock.h"

#include "base/Text.h"

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <iterator>
#include <vector>

namespace tessivo {

std::optional<std::int64_t> knownLength(const Song& song) {
    const bool isLength = song.duration && *song.duration >= 0 && *song.duration <= secondsPerDay;
    return isLength ? song.duration : std::nullopt;
}

std::optional<PlannedEnd> plannedEnd(const Show& show, std::int64_t songIndex, Instant startedAt,
                                     Instant now) {
    PlannedEnd end{now};
    bool isAnyKnown = false;
    for (std::int64_t i = std::max<std::int64_t>(songIndex, 0); i < std::ssize(show.songs); ++i) {
        const auto length = knownLength(show.songs[static_cast<std::size_t>(i)]);
        if (!length) {
            ++end.songsWithoutLength;
            continue;
        }
        isAnyKnown = true;
        if (i != songIndex) {
            end.at = end.at + static_cast<double>(*length);
        } else if (const Instant ends = startedAt + static_cast<double>(*length); ends > now) {
            end.at = ends;
        }
    }
    const bool canBeTold = isAnyKnown && end.at - now <= static_cast<double>(secondsPerDay);
    return canBeTold ? std::optional(end) : std::nullopt;
}

std::string plannedEndText(std::string_view clock, std::size_t songsWithoutLength) {
    std::string text = "Fin prévue " + std::string(clock);
    return songsWithoutLength > 0 ? text + ", " + songsWithoutLengthText(songsWithoutLength) : text;
}

std::string songsWithoutLengthText(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " morceau" : " morceaux") + " sans durée";
}

std::optional<std::int64_t> parseTimeOfDay(std::string_view text) {
    const std::vector<std::string_view> pieces = split(trimSpacesAndLineBreaks(text), ":hH");
    if (pieces.empty() || pieces.size() > 2) {
        return std::nullopt;
    }
    const std::string_view first = trimSpaces(pieces.front());
    auto hours = readInteger(first);
    auto minutes = pieces.size() == 2 ? readInteger(trimSpaces(pieces.back())) : 0;
    if (hours && pieces.size() == 1 && first.size() > 2) {
        minutes = *hours % 100;
        hours = *hours / 100;
    }
    if (!hours || !minutes || *hours < 0 || *hours > 23 || *minutes < 0 || *minutes > 59) {
        return std::nullopt;
    }
    return (*hours * 60 + *minutes) * 60;
}

std::string timeOfDayText(std::int64_t secondsAfterMidnight) {
    assert(secondsAfterMidnight >= 0);
    const int minutes = static_cast<int>(secondsAfterMidnight % secondsPerDay / 60);
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d", minutes / 60, minutes % 60);
    return text;
}

}  // namespace tessivo
