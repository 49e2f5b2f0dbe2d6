#include "live/Setlist.h"

#include <algorithm>
#include <cassert>
#include <cinttypes>
#include <cstdio>
#include <iterator>

namespace tessivo {
namespace {

/// The cursor inside [-1, count + 1], which keeps its meaning and frees the arithmetic from
/// overflow.
std::int64_t boundedIndex(const Show& show, std::int64_t songIndex) {
    return std::clamp<std::int64_t>(songIndex, -1,
                                    static_cast<std::int64_t>(show.songs.size()) + 1);
}

}  // namespace

std::span<const Song> pastSongs(const Show& show, std::int64_t songIndex) {
    const std::int64_t index = boundedIndex(show, songIndex);
    if (index <= 0 || index > static_cast<std::int64_t>(show.songs.size())) {
        return {};
    }
    const auto end = static_cast<std::size_t>(index);
    assert(end <= show.songs.size());
    const std::size_t begin = end - std::min(end, pastSongsShown);
    return std::span(show.songs).subspan(begin, end - begin);
}

std::span<const Song> nextSongs(const Show& show, std::int64_t songIndex, std::size_t limit) {
    const auto begin = static_cast<std::size_t>(boundedIndex(show, songIndex) + 1);
    if (begin >= show.songs.size()) {
        return {};
    }
    return std::span(show.songs).subspan(begin, std::min(limit, show.songs.size() - begin));
}

bool isFinished(const Show& show, std::int64_t songIndex) {
    return songIndex >= static_cast<std::int64_t>(show.songs.size());
}

std::int64_t shownPosition(const Show& show, std::int64_t songIndex) {
    const auto count = static_cast<std::int64_t>(show.songs.size());
    return std::min(count, boundedIndex(show, songIndex) + 1);
}

std::string guestLine(const Guest& guest, std::string_view placeholder) {
    std::string line = guest.name.empty() ? std::string(placeholder) : guest.name;
    return line + " — " + guestEquipmentLine(guest);
}

std::string guestEquipmentLine(const Guest& guest) {
    std::string line = guest.mic + " · " + guest.iem;
    if (const std::string_view volume = shownVolume(guest); !volume.empty()) {
        line.append(" · vol ").append(volume);
    }
    return line;
}

std::string_view shownVolume(const Guest& guest) {
    return guest.volume ? std::string_view(*guest.volume) : std::string_view();
}

std::string minutesAndSeconds(std::int64_t seconds) {
    char text[32];
    const int length =
        std::snprintf(text, sizeof text, "%" PRId64 ":%02" PRId64, seconds / 60, seconds % 60);
    assert(length > 0 && static_cast<std::size_t>(length) < sizeof text);
    return {text, static_cast<std::size_t>(length)};
}

std::string timeInWords(double seconds) {
    struct Unit {
        std::int64_t seconds;
        const char* name;
    };
    static constexpr Unit units[] = {{86'400, " j"}, {3600, " h"}, {60, " min"}, {1, " s"}};
    assert(seconds >= 0.0);
    const auto whole = static_cast<std::int64_t>(std::min(seconds, 9e15));
    const Unit* unit =
        std::ranges::find_if(units, [&](const Unit& each) { return whole >= each.seconds; });
    unit -= unit == std::end(units) ? 1 : 0;
    std::string words = std::to_string(whole / unit->seconds) + unit->name;
    const Unit* smaller = std::next(unit);
    const std::int64_t rest = whole % unit->seconds;
    if (smaller != std::end(units) && rest >= smaller->seconds) {
        words.append(" ").append(std::to_string(rest / smaller->seconds)).append(smaller->name);
    }
    return words;
}

std::string countdownText(std::optional<std::int64_t> remaining) {
    return remaining ? minutesAndSeconds(*remaining) : std::string();
}

}  // namespace tessivo
