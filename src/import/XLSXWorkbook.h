#pragma once

#include "import/TextPool.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessivo {

/// The text of every non-empty cell of a spreadsheet file. Memory goes with the cells that are
/// there, never with the numbers of their rows and columns, which a file may choose at will; a text
/// that many cells share is kept once.
struct XLSXWorkbook {
    struct Cell {
        std::int64_t column = 0;  ///< from 1, which is column A
        TextPool::Span text;      ///< never empty
    };

    /// A row with at least one cell; its cells are `cells[firstCell]` to `cells[endCell - 1]`.
    struct Row {
        std::int64_t index = 0;  ///< the file's own row number; the first row is 1
        std::uint32_t firstCell = 0;
        std::uint32_t endCell = 0;
    };

    /// Cells of one column that a spreadsheet shows as one. The text stands in the first.
    struct MergedCells {
        std::int64_t column = 0;
        std::int64_t firstRow = 0;
        std::int64_t lastRow = 0;
    };

    /// How a spreadsheet shows the sheet where that isn't what the cells hold.
    struct Looks {
        std::vector<std::int64_t> hiddenRows;  ///< of those with cells, in the file's order
        /// The first and the last of neighbours.
        std::vector<std::pair<std::int64_t, std::int64_t>> hiddenColumns;
        std::vector<MergedCells> mergedCells;  ///< those over several rows
        /// Row and column of formulas whose writer left their result to be computed.
        std::vector<std::pair<std::int64_t, std::int64_t>> unresolvedFormulas;
    };

    struct Sheet {
        std::string name;
        Looks looks;
        std::deque<Row> rows;                   ///< ascending, each index once
        std::deque<Cell> cells;                 ///< within a row ascending, each column once
        std::shared_ptr<const TextPool> texts;  ///< of the whole workbook, UTF-8
        std::int64_t maxRow = 0;
        std::int64_t maxCol = 0;
        /// The number of the last row that was read, when there were too many.
        std::optional<std::int64_t> lastRowRead;

        /// The cell of a row of this sheet; null when it is empty.
        const Cell* cell(const Row& row, std::int64_t column) const;
        /// The row with that number; null when it is empty.
        const Row* row(std::int64_t index) const;
        /// The text of a cell; none when it is empty.
        std::optional<std::string_view> text(const Row& row, std::int64_t column) const;
        std::optional<std::string_view> text(std::int64_t row, std::int64_t column) const;
    };

    std::vector<Sheet> sheets;              ///< in the workbook's order
    std::vector<std::string> unreadSheets;  ///< the names of those that couldn't be read
    /// Texts that cells name by number were too many: those beyond show their number.
    bool lacksTexts = false;
};

}  // namespace tessivo
