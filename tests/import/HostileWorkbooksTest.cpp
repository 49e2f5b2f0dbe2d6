#include "import/HostileWorkbooks.h"
#include "import/XLSXReader.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <string>
#include <variant>

using namespace tessivo;
using namespace tessivo::test;

namespace {

/// The bytes that a workbook holds on to.
std::size_t sizeOf(const XLSXWorkbook& workbook) {
    std::size_t size = 0;
    for (const XLSXWorkbook::Sheet& sheet : workbook.sheets) {
        size += sizeof(sheet) + sheet.name.size() + sheet.rows.size() * sizeof(XLSXWorkbook::Row) +
                sheet.cells.size() * sizeof(XLSXWorkbook::Cell);
    }
    return workbook.sheets.empty() ? 0 : size + workbook.sheets[0].texts->size();
}

}  // namespace

TEST_CASE("a small file can't become a large workbook") {
    for (const HostileWorkbook& hostile : hostileWorkbooks()) {
        CAPTURE(hostile.name);
        const std::string file = hostile.make();
        REQUIRE(file.size() < std::size_t{10} * 1024 * 1024);
        const XLSXReader::Result result = XLSXReader::read(file);
        if (const auto* workbook = std::get_if<XLSXWorkbook>(&result)) {
            CHECK(sizeOf(*workbook) < std::size_t{65} * 1024 * 1024);
        }
    }
}
