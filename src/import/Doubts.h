#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessivo {

/// What is read by the rules, and yet seldom meant. The operator is told, and nothing is changed.
enum class Doubt {
    negativeDuration,
    shortDuration,
    longDuration,
    durationOutOfRange,
    timecodeOutOfRange,
    sameTimecode,
    earlierTimecode,
    numberAsTitle,
    dateAsTitle,
    errorAsTitle,
    unresolvedTitle,
    notASong,
    mergedGuests,
    hiddenRow,
    hiddenColumn,
    cutText,
};

/// What the operator is told, in French.
std::string_view textOf(Doubt doubt);

/// About a length of so many seconds that a cell's text was read as: below 20 s or over 20 minutes
/// is no song, and fields of 60 or more are a slip.
std::optional<Doubt> doubtAboutDuration(std::string_view text, std::int64_t seconds);

/// About the fields of a timecode: over 23:59:59:29 no input ever carries it.
std::optional<Doubt> doubtAboutTimecode(std::string_view timecode);

/// About a title that is a number, a date or an error, or says that the row is no song.
std::optional<Doubt> doubtAboutTitle(std::string_view title);

}  // namespace tessivo
