#pragma once

#include "base/Text.h"
#include "import/XLSXWorkbook.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessivo {

/// Which column of a sheet tells what.
struct RunSheetColumns {
    std::optional<std::int64_t> title, guests, duration, ltc;
};

/// The cells of one song. A missing column or cell is an empty text.
struct SongCells {
    const XLSXWorkbook::Row& row;
    std::string_view title;  ///< trimmed, never empty
    std::string_view guests;
    std::string_view duration;
    std::string_view ltc;
};

/// Calls `visit(song)` for each row from `startRow` on that has a title, top down, until it gives
/// false. Rows that aren't there cost nothing: a file may skip as many numbers as it likes.
template <typename Visit>
void forEachSong(const XLSXWorkbook::Sheet& sheet, const RunSheetColumns& columns,
                 std::int64_t startRow, Visit&& visit) {
    if (!columns.title) {
        return;
    }
    for (auto at = std::ranges::lower_bound(sheet.rows, startRow, {}, &XLSXWorkbook::Row::index);
         at != sheet.rows.end(); ++at) {
        const XLSXWorkbook::Row& row = *at;
        const auto cell = [&](std::optional<std::int64_t> column) {
            return column ? sheet.text(row, *column).value_or("") : std::string_view();
        };
        const std::string_view title = trimSpacesAndLineBreaks(cell(columns.title));
        if (!title.empty() && !visit(SongCells{row, title, cell(columns.guests),
                                               cell(columns.duration), cell(columns.ltc)})) {
            return;
        }
    }
}

}  // namespace tessivo
