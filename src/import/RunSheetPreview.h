#pragma once

#include "import/Doubts.h"
#include "import/Notations.h"
#include "import/ReadingLimits.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

class RunSheetImport;

/// What importing a run sheet would make of its cells. Texts are cut to what a line can show.
struct RunSheetPreview {
    /// A cell whose text the rules don't read as a length or timecode.
    struct UnreadCell {
        std::int64_t row = 0;
        std::int64_t column = 0;
        std::string text;
        std::optional<Reading> reading;  ///< what a person would read
        bool isTaken = false;            ///< the reading counts
    };

    /// A notation that cells of a column use.
    struct NotationUse {
        Notation notation = Notation::minutesAndSeconds;
        std::int64_t column = 0;
        std::int64_t cells = 0;
        std::string text;     ///< of the first of them
        std::string reading;  ///< of the first of them
    };

    struct DoubtfulCell {
        std::int64_t row = 0;
        std::int64_t column = 0;
        Doubt doubt = Doubt::shortDuration;
        std::string text;
    };

    static constexpr std::size_t maximumListed = 200;
    static constexpr std::size_t maximumTextShown = 200;  ///< characters
    /// A show seldom has more; the operator is asked first.
    static constexpr std::int64_t usualSongs = 500;
    static constexpr std::int64_t usualGuests = 100;  ///< of one song

    std::int64_t songs = 0;
    std::int64_t durations = 0;
    std::int64_t timecodes = 0;
    std::int64_t mostGuests = 0;  ///< of one song
    std::int64_t unread = 0;      ///< cells that stay without a length or timecode
    std::int64_t taken = 0;       ///< cells that would, but for the reading that counts
    std::int64_t doubts = 0;
    std::vector<NotationUse> notations;       ///< in the order of the enumeration
    std::vector<UnreadCell> unreadCells;      ///< the first ones in row order, taken ones included
    std::vector<DoubtfulCell> doubtfulCells;  ///< the first ones in row order

    bool isUnusuallyLarge() const { return songs > usualSongs || mostGuests > usualGuests; }
};

/// One pass over the rows, which can be a million. Uses nothing but `import`; any thread. Ends
/// early, with a void result, once `progress` is cancelled.
RunSheetPreview previewOf(const RunSheetImport& import, WorkProgress& progress);

/// The start of a text, on one line.
std::string shortened(std::string_view text);

}  // namespace tessivo
