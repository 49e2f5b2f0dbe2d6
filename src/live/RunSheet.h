#pragma once

#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// A time of day on a run sheet, in seconds after the midnight before the show; past midnight it is
/// more than a day.
struct SheetTime {
    std::int64_t seconds = 0;
    bool isEarliest = false;  ///< a song before it has no known length, so it may well be later

    friend bool operator==(const SheetTime&, const SheetTime&) = default;
};

/// One song of a run sheet.
struct RunSheetRow {
    std::size_t number = 0;  ///< 1-based place in the setlist
    std::string title;
    std::string timecode;  ///< empty when the song has none
    std::optional<SheetTime> start;
    std::optional<std::int64_t> length;  ///< seconds
    std::optional<SheetTime> end;        ///< none without a length
    std::vector<Guest> guests;
};

/// A show as it is handed out.
struct RunSheet {
    std::vector<RunSheetRow> rows;
    std::int64_t knownLength = 0;  ///< of all songs together, in seconds
    std::size_t songsWithoutLength = 0;
};

/// The run sheet of a show that starts at `plannedStart`, in seconds after midnight; without it no
/// row has a start or an end.
RunSheet runSheet(const Show& show, std::optional<std::int64_t> plannedStart);

/// HH:MM, after "≥ " when it is the earliest; empty for none.
std::string sheetTimeText(const std::optional<SheetTime>& time);

/// Hours, minutes and seconds, H:MM:SS.
std::string hoursMinutesAndSeconds(std::int64_t seconds);

/// The run sheet as a file for spreadsheets: UTF-8 with a byte order mark, semicolons, CRLF, which
/// is what French ones open by a double click. A line per guest, the song's times on the first of
/// them only, so that sums hold. Lengths are H:MM:SS, or 3:45 would be taken for a quarter to four.
/// No cell can be taken for a formula.
std::string runSheetCsv(const RunSheet& sheet);

}  // namespace tessivo
