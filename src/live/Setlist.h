#pragma once

#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessivo {

/// How many played songs the screens keep in view.
constexpr std::size_t pastSongsShown = 2;
/// How many coming songs the live control screen lists.
constexpr std::size_t nextSongsOnLiveScreen = 4;
/// The stage display lists all that an evening has; a message from the network may hold thousands,
/// and to make a hundred rows holds the screen for a tenth of a second.
constexpr std::size_t nextSongsOnStage = 100;

/// The songs just before the cursor, oldest first: at most `pastSongsShown`, none when the cursor
/// lies beyond the finished position or before the first song.
std::span<const Song> pastSongs(const Show& show, std::int64_t songIndex);

/// The songs after the cursor in setlist order, at most `limit`.
std::span<const Song> nextSongs(const Show& show, std::int64_t songIndex, std::size_t limit);

/// Whether the cursor has moved past the last song.
bool isFinished(const Show& show, std::int64_t songIndex);

/// The 1-based place shown to the operator, from 0 (an empty or unstarted show) to the number of
/// songs.
std::int64_t shownPosition(const Show& show, std::int64_t songIndex);

/// One guest on one line: NAME — MIC · IEM · vol VOLUME; the volume part only when there is one.
/// `placeholder` stands for an empty name.
std::string guestLine(const Guest& guest, std::string_view placeholder);

/// The equipment part of that line: MIC · IEM · vol VOLUME.
std::string guestEquipmentLine(const Guest& guest);

/// The volume note, empty when there is none: an absent note and an empty one look the same.
std::string_view shownVolume(const Guest& guest);

/// Minutes and seconds of a length or a countdown, M:SS; minutes aren't padded. A negative length
/// has the sign on both parts: -1:-15.
std::string minutesAndSeconds(std::int64_t seconds);

/// A length of time as one says it, in French, by its two largest units: 45 s, 2 min 5 s, 1 h 10
/// min, 3 j. Cut to whole seconds; not negative.
std::string timeInWords(double seconds);

/// The time left as both screens show it: empty when there is none to show.
std::string countdownText(std::optional<std::int64_t> remaining);

}  // namespace tessivo
