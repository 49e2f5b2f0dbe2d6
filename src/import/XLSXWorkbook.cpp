#include "import/XLSXWorkbook.h"

#include <algorithm>
#include <cassert>
#include <span>

namespace tessivo {

std::optional<std::string_view> XLSXWorkbook::Sheet::text(const Row& row,
                                                          std::int64_t column) const {
    assert(row.firstCell <= row.endCell && row.endCell <= cells.size());
    const auto inRow =
        std::span(cells).subspan(row.firstCell, std::size_t{row.endCell} - row.firstCell);
    const auto cell = std::ranges::lower_bound(inRow, column, {}, &Cell::column);
    if (cell == inRow.end() || cell->column != column) {
        return std::nullopt;
    }
    assert(std::size_t{cell->textOffset} + cell->textLength <= texts->size());
    return std::string_view(*texts).substr(cell->textOffset, cell->textLength);
}

std::optional<std::string_view> XLSXWorkbook::Sheet::text(std::int64_t row,
                                                          std::int64_t column) const {
    const auto found = std::ranges::lower_bound(rows, row, {}, &Row::index);
    if (found == rows.end() || found->index != row) {
        return std::nullopt;
    }
    return text(*found, column);
}

}  // namespace tessivo
