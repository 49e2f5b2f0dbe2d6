#pragma once

#include "base/Instant.h"
#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

// What the lengths of the songs make of the clock. Times of day are seconds after midnight.

constexpr std::int64_t secondsPerDay = 86'400;

/// The song's length in seconds, 0 to `secondsPerDay`; none when it has none. A length that can't
/// be one, which files may hold, counts as none, so that sums stay small and never run backwards.
std::optional<std::int64_t> knownLength(const Song& song);

/// When the show will be over, and how many of the songs to come no length is known of.
struct PlannedEnd {
    Instant at;
    std::size_t songsWithoutLength = 0;
};

/// The end of the song under the cursor, or `now` when it runs over or has no length, plus the
/// lengths after it. It stands still while a song plays within its length. None when no length is
/// known of what is still to come, and none beyond a day, which a clock couldn't tell.
std::optional<PlannedEnd> plannedEnd(const Show& show, std::int64_t songIndex, Instant startedAt,
                                     Instant now);

/// French: Fin prévue 22:47, 3 morceaux sans durée. `clock` is the end as the local clock shows it.
std::string plannedEndText(std::string_view clock, std::size_t songsWithoutLength);

/// "3 morceaux sans durée", "1 morceau sans durée".
std::string songsWithoutLengthText(std::size_t count);

/// The time of day that was typed: 20:30, 20h30, 20 h, 20 or 2030. None for any other text.
std::optional<std::int64_t> parseTimeOfDay(std::string_view text);

/// HH:MM; of a time past midnight, the next day's.
std::string timeOfDayText(std::int64_t secondsAfterMidnight);

}  // namespace tessivo
