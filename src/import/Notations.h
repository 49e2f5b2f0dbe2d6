#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

// What a person would read in cells that the rules of RunSheetText.h leave alone. Such a reading is
// shown beside its cell and counts only once the operator takes it. A text that could mean two
// things, such as 4,30, has none.

/// A way of writing lengths or timecodes.
enum class Notation {
    minutesAndSeconds,  ///< 3:45
    signs,              ///< 3'45", 3’45, 3′45″, 4'
    units,              ///< 3 min 45, 3m45s, 225 s
    lengthInDays,       ///< a spreadsheet's time, stored as part of a day: 0.0026041666666666665
    frameSeparator,     ///< 10:00:00;00, 10:00:00.00
    withoutFrames,      ///< 10:00:00
    marked,             ///< TC 01:00:00:00, 01:00:00:00 (TC)
    timeOfDay,          ///< a spreadsheet's time: 0.4166666666666667 is 10:00:00:00
};

struct Reading {
    Notation notation = Notation::minutesAndSeconds;
    std::string text;          ///< as it is shown: minutes and seconds, or the timecode
    std::int64_t seconds = 0;  ///< of a length
};

/// The length that a person would read on the text's first line.
std::optional<Reading> likelyDuration(std::string_view text);

/// The timecode that a person would read there, within 23:59:59:29.
std::optional<Reading> likelyTimecode(std::string_view text);

}  // namespace tessivo
