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

/// The bytes that a workbook of one sheet holds on to.
std::size_t sizeOf(const XLSXWorkbook& workbook) {
    const XLSXWorkbook::Sheet& sheet = workbook.sheets.at(0);
    return sheet.rows.size() * sizeof(XLSXWorkbook::Row) +
           sheet.cells.size() * sizeof(XLSXWorkbook::Cell) + sheet.texts->size();
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
        CHECK(sizeOf(workbookIn(file)) < 65 * mebibyte);
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

TEST_CASE("only so many sheets are read, and fewer when they are large") {
    CHECK(workbookIn(manyTimes(maximumSheets + 1, "<a/>").file()).sheets.size() == maximumSheets);
    // The relationship that the sheet needs stands behind more than are kept.
    WorkbookWriter writer({""});
    writer.relationships.insert(writer.relationships.find('>') + 1,
                                numbered(R"(<Relationship Target="worksheets/" Id=")", "\"/>"));
    CHECK(workbookIn(writer.file()).sheets.empty());

    const std::string spaces(20 * mebibyte, ' ');  // of 160 MiB in all; the last breaks off
    CHECK(workbookIn(manyTimes(20, "<a>" + spaces + "</a>").file()).sheets.size() == 8);
    // Tags, attributes and line breaks take longer than as many bytes of text.
    const auto sheetsRead = [](std::string_view piece, std::size_t size) {
        return workbookIn(manyTimes(40, "<a>" + filled(size * mebibyte, piece)).file())
            .sheets.size();
    };
    CHECK(sheetsRead("<n/>", 2) == 20);  // 4 bytes that count as 16, and so on
    CHECK(sheetsRead("<n a=''/>", 2) == 22);
    CHECK(sheetsRead("\n", 2) == 20);
    // Compressed data costs time too, also where its blocks give no byte.
    std::vector<ZipMember> members = manyTimes(20, "").members();
    members.back().content =
        filled(9 * mebibyte, std::string("\x00\x00\x00\xFF\xFF", 5)) + deflated("<a/>");
    members.back().method = 0;
    std::string archive = zipOf(members);
    archive.replace(archive.rfind("PK\x01\x02") + 10, 2, littleEndian(8, 2));
    CHECK(workbookIn(archive).sheets.size() == 17);
}
