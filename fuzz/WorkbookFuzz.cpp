#include "Fuzz.h"
#include "import/RunSheetImport.h"
#include "import/RunSheetPreview.h"
#include "import/XLSXReader.h"
#include "support/ZipWriter.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using tessivo::XLSXWorkbook;

/// A workbook whose parts stand one after the other in the input, each but the last followed by a
/// byte that UTF-8 doesn't have; what is missing takes the usual form.
std::string workbookFrom(std::string_view input) {
    using tessivo::test::ZipMember;
    std::array<ZipMember, 4> members = {
        ZipMember{.name = "xl/worksheets/sheet1.xml"}, ZipMember{.name = "xl/sharedStrings.xml"},
        ZipMember{.name = "xl/workbook.xml", .content = R"(<a><sheet name="a" r:id="b"/></a>)"},
        ZipMember{.name = "xl/_rels/workbook.xml.rels",
                  .content = R"(<a><Relationship Id="b" Target="worksheets/sheet1.xml"/></a>)"}};
    std::size_t part = 0;
    for (bool isLast = false; !isLast && part < members.size(); ++part) {
        const std::size_t end = input.find('\xFF');
        members[part].content = input.substr(0, end);
        isLast = end == std::string_view::npos;
        input.remove_prefix(isLast ? input.size() : end + 1);
    }
    for (ZipMember& member : members) {
        member.method = 0;
    }
    return tessivo::test::zipOf({members.begin(), members.end()});
}

void checkSheet(const XLSXWorkbook::Sheet& sheet) {
    require(std::ranges::adjacent_find(sheet.rows, std::greater_equal{},
                                       &XLSXWorkbook::Row::index) == sheet.rows.end());
    for (const XLSXWorkbook::Row& row : sheet.rows) {
        require(row.firstCell < row.endCell && row.endCell <= sheet.cells.size());
        require(row.index <= sheet.maxRow);
        std::int64_t previous = 0;
        for (std::size_t i = row.firstCell; i < row.endCell; ++i) {
            const std::int64_t column = std::exchange(previous, sheet.cells[i].column);
            require(column < previous && previous <= sheet.maxCol);
            require(!sheet.text(row.index, previous).value_or("").empty());
        }
    }
}

void checkImport(XLSXWorkbook workbook) {
    tessivo::RunSheetImport import;
    const std::int64_t sheets = std::ssize(workbook.sheets);
    import.load({std::move(workbook)});
    for (std::int64_t index = 0; index < sheets; ++index) {
        import.selectSheet(index);
        import.startRow = import.headerRow;
        for (std::int64_t column = 1; column < 5; ++column) {
            import.setRole(column, tessivo::columnRoles[static_cast<std::size_t>(column)]);
            import.columnLabel(column);
        }
        tessivo::WorkProgress progress;
        const auto before = tessivo::previewOf(import, progress);
        for (const auto& use : before.notations) {
            import.accept(use.notation, true);
        }
        for (const auto& cell : before.doubtfulCells) {
            require(!textOf(cell.doubt).empty());
        }
        const auto preview = tessivo::previewOf(import, progress);
        require(preview.songs == before.songs);
        require(preview.unread + preview.taken == before.unread + before.taken);
        const auto show = import.createShow();
        require(preview.songs == (show ? std::ssize(show->songs) : 0));
    }
}

}  // namespace

/// Any text as the parts of a workbook, and what an import makes of it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = workbookFrom(asText(data, size));
    tessivo::WorkProgress progress;
    auto result = tessivo::XLSXReader::read(file, progress);
    if (auto* workbook = std::get_if<XLSXWorkbook>(&result)) {
        std::ranges::for_each(workbook->sheets, checkSheet);
        checkImport(std::move(*workbook));
    }
    return 0;
}
