#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// The text of every non-empty cell of a spreadsheet file. Memory goes with the cells that are
/// there, never with the numbers of their rows and columns, which a file may choose at will; a text
/// that many cells share is kept once.
struct XLSXWorkbook {
    /// Where the text of a cell stands among the workbook's texts.
    struct Cell {
        std::int64_t column = 0;  ///< from 1, which is column A
        std::uint32_t textOffset = 0;
        std::uint32_t textLength = 0;  ///< in bytes, never 0
    };

    /// A row with at least one cell; its cells are `cells[firstCell]` to `cells[endCell - 1]`.
    struct Row {
        std::int64_t index = 0;  ///< the file's own row number; the first row is 1
        std::uint32_t firstCell = 0;
        std::uint32_t endCell = 0;
    };

    struct Sheet {
        std::string name;
        std::vector<Row> rows;                     ///< ascending, each index once
        std::vector<Cell> cells;                   ///< within a row ascending, each column once
        std::shared_ptr<const std::string> texts;  ///< of the whole workbook, UTF-8
        std::int64_t maxRow = 0;
        std::int64_t maxCol = 0;

        /// The text of a cell of a row of this sheet; none when it is empty.
        std::optional<std::string_view> text(const Row& row, std::int64_t column) const;
        std::optional<std::string_view> text(std::int64_t row, std::int64_t column) const;
    };

    std::vector<Sheet> sheets;  ///< in the workbook's order
};

}  // namespace tessivo
