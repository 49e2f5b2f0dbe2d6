#include "import/XLSXWorkbook.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <ranges>

namespace tessivo {

const XLSXWorkbook::Cell* XLSXWorkbook::Sheet::cell(const Row& row, std::int64_t column) const {
    assert(row.firstCell <= row.endCell && row.endCell <= cells.size());
    const auto first = cells.begin() + static_cast<std::ptrdiff_t>(row.firstCell);
    const auto end = cells.begin() + static_cast<std::ptrdiff_t>(row.endCell);
    const auto found = std::ranges::lower_bound(first, end, column, {}, &Cell::column);
    return found == end || found->column != column ? nullptr : &*found;
}

const XLSXWorkbook::Row* XLSXWorkbook::Sheet::row(std::int64_t index) const {
    const auto found = std::ranges::lower_bound(rows, index, {}, &Row::index);
    return found == rows.end() || found->index != index ? nullptr : &*found;
}

std::optional<std::string_view> XLSXWorkbook::Sheet::text(const Row& row,
                                                          std::int64_t column) const {
    const Cell* found = cell(row, column);
    return found ? std::optional(texts->at(found->text)) : std::nullopt;
}

std::optional<std::string_view> XLSXWorkbook::Sheet::text(std::int64_t row,
                                                          std::int64_t column) const {
    const Row* found = this->row(row);
    return found ? text(*found, column) : std::nullopt;
}

}  // namespace tessivo
