#include "import/WorkbookParts.h"
#include "import/Workbooks.h"
#include "support/WorkbookWriter.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace tessivo;
using namespace tessivo::test;

namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;

/// The text as often as fits into `size` bytes.
std::string filled(std::size_t size, std::string_view text) {
    std::string result;
    for (result.reserve(size); result.size() + text.size() <= size;) {
        result += text;
    }
    return result;
}

/// Numbered texts, 8 MiB of them.
std::string numbered(std::string_view before, std::string_view after) {
    std::string result;
    for (int i = 0; result.size() < 8 * mebibyte; ++i) {
        result.append(before).append(std::to_string(i)).append(after);
    }
    return result;
}

WorkbookWriter sheet(std::string xml) {
    WorkbookWriter writer({""});
    writer.sheets[0] = std::move(xml);
    return writer;
}

std::string withSheet(std::string xml) {
    return sheet(std::move(xml)).file();
}

std::string withStrings(std::string xml) {
    WorkbookWriter writer({R"(<row r="1"><c r="A1"><v>1</v></c></row>)"});
    writer.sharedStrings = std::move(xml);
    return writer.file();
}

WorkbookWriter manyTimes(std::size_t count, std::string xml) {
    WorkbookWriter writer = sheet(std::move(xml));
    const std::string entry = R"(<sheet name="a" r:id="rId1"/>)";
    writer.workbook = "<workbook>" + filled(count * entry.size(), entry);
    return writer;
}

ReadingLimits limited(std::size_t work, std::size_t memory) {
    return {.work = Allowance(work), .memory = Allowance(memory)};
}

}  // namespace

TEST_CASE("a small file takes neither long to read nor much memory") {
    const std::string longText(mebibyte, 'x');
    const std::pair<const char*, std::string> files[] = {
        {"too long a text in a cell",
         withSheet(R"(<a><row r="1"><c r="A1"><v>)" + std::string(66 * mebibyte, 'x'))},
        {"cells in reverse order",
         withSheet(R"(<a><row r="1">)" +
                   filled(8 * mebibyte, R"(<c r="Z"><v>1</v></c><c r="A"><v>1</v></c>)") +
                   "</row></a>")},
        {"many rows",
         withSheet("<a>" + numbered(R"(<row r=")", R"("><c r="A"><v>1</v></c></row>)"))},
        {"many empty shared strings", withStrings("<sst>" + filled(8 * mebibyte, "<si/>"))},
        {"the last cell there is",
         withSheet(R"(<a><row r="1048576"><c r="XFD1048576"><v>1</v></c></row></a>)")},
        {"one long text in many cells",
         workbookOf(filled(8 * mebibyte, R"(<row><c r="A" t="s"><v>0</v></c></row>)"),
                    {"<t>" + longText + "</t>"})},
        {"cells within cells", withSheet("<row>" + filled(700'000, R"(<c r="A">   )") + "<v>" +
                                         longText + "</v>" + filled(200'000, "</c>") + "</row>")},
        {"strings within strings", withStrings(filled(200'000, "<si>") + "<t>" + longText + "</t>" +
                                               filled(250'000, "</si>"))},
    };
    for (const auto& row : files) {
        CAPTURE(row.first);
        const auto& [name, file] = row;
        REQUIRE(file.size() < 10 * mebibyte);
        const XLSXWorkbook workbook = workbookIn(file, limited(100 * mebibyte, mebibyte));
        const XLSXWorkbook::Sheet& sheet = workbook.sheets.at(0);
        CHECK(sheet.rows.size() * sizeof(XLSXWorkbook::Row) +
                  sheet.cells.size() * sizeof(XLSXWorkbook::Cell) <=
              mebibyte);
    }
}

TEST_CASE("a part ends where it declares what can multiply, or asks the parser for much memory") {
    const auto cellsAfter = [](const std::string& start) {
        const std::string row = R"(<row r="1"><c r="A1"><v>1</v></c></row></a>)";
        return cellsOf(workbookIn(withSheet(start + row)).sheets.at(0));
    };
    CHECK(cellsAfter("<!DOCTYPE a><a n=\"\"><n/><!-- -->") == "A1=1;");
    CHECK(cellsAfter("<!DOCTYPE a [<!ENTITY e \"lol\">]><a>").empty());
    CHECK(cellsAfter("<a " + numbered("n", "=\"\" ") + ">").empty());
    CHECK(cellsAfter("<a>" + numbered("<n", "/>")).empty());
    CHECK(cellsAfter("<a><!--" + std::string(17 * mebibyte, 'x') + "-->").empty());
}

TEST_CASE("what the limits cut is told, and small sheets are read before large ones") {
    const XLSXWorkbook many = workbookIn(manyTimes(XLSXReader::maximumSheets + 1, "<a/>").file());
    CHECK(many.sheets.size() == XLSXReader::maximumSheets);
    CHECK(many.unreadSheets == std::vector<std::string>{"a"});

    // Rows that end before the memory does are kept, and so is the sheet behind.
    const std::string row = R"(<c r="A"><v>1</v></c><c r="B"><v>1</v></c>)";
    std::string rows;
    for (int number = 1; number <= 100'000; ++number) {
        rows += "<row r=\"" + std::to_string(number) + "\">" + row + "</row>";
    }
    WorkbookWriter writer({rows, R"(<row r="7"><c r="A7"><v>1</v></c></row>)"});
    for (const ReadingLimits& limits :
         {limited(100 * mebibyte, mebibyte), limited(5 * mebibyte, 100 * mebibyte)}) {
        const XLSXWorkbook workbook = workbookIn(writer.file(), limits);
        REQUIRE(workbook.sheets.size() == 2);
        const XLSXWorkbook::Sheet& large = workbook.sheets[0];
        CHECK(large.maxRow > 10'000);
        CHECK(large.maxRow < 90'000);
        CHECK(large.lastRowRead == large.maxRow);
        CHECK(cellsOf(workbook.sheets[1]) == "A7=1;");
        CHECK_FALSE(workbook.sheets[1].lastRowRead.has_value());
    }

    // Texts beyond the memory: cells show their numbers, and the workbook says why.
    writer = WorkbookWriter({R"(<row r="1"><c r="A1" t="s"><v>99</v></c></row>)"});
    writer.sharedStrings = "<sst>" +
                           filled(mebibyte, "<si><t>" + std::string(32'000, 'x') + "</t></si>") +
                           filled(900, "<si/>");
    const XLSXWorkbook workbook = workbookIn(writer.file(), limited(100 * mebibyte, mebibyte));
    CHECK(cellsOf(workbook.sheets.at(0)) == "A1=99;");
    CHECK(workbook.lacksTexts);
    CHECK_FALSE(many.lacksTexts);
}

TEST_CASE("work is bounded whatever is repeated") {
    // Tags, attributes and line breaks count for more than their bytes.
    const std::pair<const char*, std::size_t> rows[] = {
        {" ", 10}, {"<n/>", 3}, {"<n a=''/>", 3}, {"\n", 3}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [piece, sheets] = row;
        const std::string file = manyTimes(20, "<a>" + filled(mebibyte, piece)).file();
        CHECK(workbookIn(file, limited(10 * mebibyte, mebibyte)).sheets.size() == sheets);
    }
    // Compressed data costs time too, also where its blocks give no byte.
    std::vector<ZipMember> members = manyTimes(20, "").members();
    members.back().content =
        filled(mebibyte, std::string("\x00\x00\x00\xFF\xFF", 5)) + deflated("<a/>");
    members.back().method = 0;
    std::string archive = zipOf(members);
    archive.replace(archive.rfind("PK\x01\x02") + 10, 2, littleEndian(8, 2));
    CHECK(workbookIn(archive, limited(10 * mebibyte, mebibyte)).sheets.size() == 9);
}
