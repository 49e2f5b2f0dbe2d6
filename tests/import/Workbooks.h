#pragma once

#include "import/ColumnLetters.h"
#include "import/XLSXReader.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <string>
#include <utility>
#include <variant>

namespace tessivo::test {

/// The workbook in the bytes of a file, which must hold one.
inline XLSXWorkbook workbookIn(const std::string& file, ReadingLimits limits = {}) {
    WorkProgress progress;
    XLSXReader::Result result = XLSXReader::read(file, progress, limits);
    REQUIRE(std::holds_alternative<XLSXWorkbook>(result));
    return std::get<XLSXWorkbook>(std::move(result));
}

/// The same for a file of the source tree.
inline XLSXWorkbook workbookAt(const std::string& path) {
    return workbookIn(readFile(TESSIVO_SOURCE_DIR "/" + path));
}

/// Every cell as "B7=text;", in order.
inline std::string cellsOf(const XLSXWorkbook::Sheet& sheet) {
    std::string cells;
    for (const XLSXWorkbook::Row& row : sheet.rows) {
        for (std::size_t i = row.firstCell; i < row.endCell; ++i) {
            const std::int64_t column = sheet.cells[i].column;
            CHECK(sheet.text(row.index, column) == sheet.text(row, column));
            CHECK((row.index <= sheet.maxRow && column <= sheet.maxCol));
            cells += columnLetter(column) + std::to_string(row.index) + '=' +
                     std::string(sheet.text(row, column).value()) + ';';
        }
    }
    CHECK(sheet.cells.empty() == cells.empty());
    return cells;
}

}  // namespace tessivo::test
