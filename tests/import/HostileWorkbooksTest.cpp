#include "import/XLSXReader.h"
#include "support/WorkbookWriter.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <variant>

using namespace tessivo;
using namespace tessivo::test;

namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
/// More than is read of a small file.
constexpr std::size_t overBudget = 66 * mebibyte;

/// The text as often as fits into `size` bytes.
std::string filled(std::size_t size, std::string_view text) {
    std::string result;
    result.reserve(size);
    while (result.size() + text.size() <= size) {
        result += text;
    }
    return result;
}

/// Numbered texts, `size` bytes of them.
std::string numbered(std::size_t size, std::string_view before, std::string_view after) {
    std::string result;
    result.reserve(size + 100);
    for (int i = 0; result.size() < size; ++i) {
        result += before;
        result += std::to_string(i);
        result += after;
    }
    return result;
}

std::string withSheet(std::string xml) {
    WorkbookWriter writer({""});
    writer.sheets[0] = std::move(xml);
    return writer.file();
}

std::string withStrings(std::string xml) {
    WorkbookWriter writer({R"(<row r="1"><c r="A1"><v>1</v></c></row>)"});
    writer.sharedStrings = std::move(xml);
    return writer.file();
}

/// Nine levels of entities, each ten of the one below: 3 GB of text from 1 KB.
std::string entityBomb() {
    std::string declarations = "<!ENTITY e0 \"lol\">";
    for (int level = 1; level <= 9; ++level) {
        const std::string below = "&e" + std::to_string(level - 1) + ";";
        declarations +=
            "<!ENTITY e" + std::to_string(level) + " \"" + filled(below.size() * 10, below) + "\">";
    }
    return withSheet("<!DOCTYPE worksheet [" + declarations +
                     R"(]><worksheet><row r="1"><c r="A1"><v>&e9;</v></c></row></worksheet>)");
}

std::string defaultAttributes() {
    return withSheet("<!DOCTYPE a [<!ATTLIST c r CDATA \"" + std::string(60'000, '1') + "\">]><a>" +
                     filled(8 * mebibyte, "<c/>") + "</a>");
}

/// Many members over one piece of data, and many sheets over those.
std::string overlappingMembers() {
    WorkbookWriter writer(std::vector<std::string>(5'000));
    std::vector<ZipMember> members = writer.members();
    for (ZipMember& member : members) {
        if (member.name.starts_with("xl/worksheets/")) {
            member.content.clear();
        }
    }
    members[3].content = "<worksheet>" + std::string(8 * mebibyte, ' ');
    std::string archive = zipOf(members);
    std::size_t first = archive.find("PK\x01\x02", archive.rfind("PK\x03\x04"));
    for (int i = 0; i < 3; ++i) {
        first = archive.find("PK\x01\x02", first + 1);
    }
    const std::string sizes = archive.substr(first + 20, 8);
    const std::string offset = archive.substr(first + 42, 4);
    for (std::size_t record = first; record != std::string::npos;
         record = archive.find("PK\x01\x02", record + 1)) {
        archive.replace(record + 20, 8, sizes).replace(record + 42, 4, offset);
    }
    return archive;
}

std::string oneSheetManyTimes(std::string xml) {
    WorkbookWriter writer({""});
    writer.sheets[0] = std::move(xml);
    writer.workbook = "<workbook>" + filled(mebibyte, R"(<sheet name="a" r:id="rId1"/>)");
    return writer.file();
}

/// Nine mebibytes of blocks that give no byte, as often as there are sheets.
std::string emptyDeflateBlocks() {
    std::string stream = filled(9 * mebibyte, std::string("\x00\x00\x00\xFF\xFF", 5));
    stream += std::string("\x03\x00", 2);
    WorkbookWriter writer({""});
    writer.workbook = "<workbook>" + filled(mebibyte, R"(<sheet name="a" r:id="rId1"/>)");
    std::vector<ZipMember> members = writer.members();
    members.back().content = stream;
    members.back().method = 0;
    std::string archive = zipOf(members);
    archive.replace(archive.rfind("PK\x01\x02") + 10, 2, littleEndian(8, 2));
    return archive;
}

/// Small files that would take a reader without bounds long, or need much memory.
struct HostileWorkbook {
    const char* name;
    std::string (*make)();
};

const HostileWorkbook hostileWorkbooks[] = {
    {"too long a text in a cell",
     [] { return withSheet(R"(<a><row r="1"><c r="A1"><v>)" + std::string(overBudget, 'x')); }},
    {"too long a shared text",
     [] { return withStrings("<sst><si><t>" + std::string(overBudget, 'x')); }},
    {"cells in reverse order",
     [] {
         return withSheet(R"(<a><row r="1">)" +
                          filled(8 * mebibyte, R"(<c r="Z"><v>1</v></c><c r="A"><v>1</v></c>)") +
                          "</row></a>");
     }},
    {"many rows",
     [] {
         return withSheet(
             "<a>" + numbered(8 * mebibyte, R"(<row r=")", R"("><c r="A"><v>1</v></c></row>)"));
     }},
    {"many empty shared strings",
     [] { return withStrings("<sst>" + filled(8 * mebibyte, "<si/>")); }},
    {"the last cell there is",
     [] { return withSheet(R"(<a><row r="1048576"><c r="XFD1048576"><v>1</v></c></row></a>)"); }},
    {"one long text in many cells",
     [] {
         return workbookOf(filled(8 * mebibyte, R"(<row><c r="A" t="s"><v>0</v></c></row>)"),
                           {"<t>" + std::string(mebibyte, 'x') + "</t>"});
     }},
    {"cells within cells",
     [] {
         return withSheet("<row>" + filled(700'000, R"(<c r="A">   )") + "<v>" +
                          std::string(mebibyte, 'x') + "</v>" + filled(200'000, "</c>") + "</row>");
     }},
    {"strings within strings",
     [] {
         return withStrings(filled(200'000, "<si>") + "<t>" + std::string(mebibyte, 'x') + "</t>" +
                            filled(250'000, "</si>"));
     }},
    {"element names without end",
     [] { return withSheet("<a>" + numbered(8 * mebibyte, "<n", "/>")); }},
    {"attributes without end",
     [] { return withSheet("<a " + numbered(8 * mebibyte, "n", "=\"\" ") + "/>"); }},
    {"a comment without end", [] { return withSheet("<!--" + std::string(overBudget, '-')); }},
    {"entities within entities", entityBomb},
    {"long default attributes", defaultAttributes},
    {"relationships without end",
     [] {
         WorkbookWriter writer({""});
         writer.relationships =
             "<a>" + numbered(8 * mebibyte, "<Relationship Target=\"worksheets/\" Id=\"", "\"/>");
         return writer.file();
     }},
    {"sheets without end", [] { return oneSheetManyTimes("<worksheet/>"); }},
    {"a large sheet many times",
     [] { return oneSheetManyTimes("<a>" + std::string(8 * mebibyte, ' ')); }},
    {"members that share their data", overlappingMembers},
    {"compressed data that gives nothing", emptyDeflateBlocks},
};

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
    for (const HostileWorkbook& hostile : hostileWorkbooks) {
        CAPTURE(hostile.name);
        const std::string file = hostile.make();
        REQUIRE(file.size() < std::size_t{10} * 1024 * 1024);
        const XLSXReader::Result result = XLSXReader::read(file);
        if (const auto* workbook = std::get_if<XLSXWorkbook>(&result)) {
            CHECK(sizeOf(*workbook) < std::size_t{65} * 1024 * 1024);
        }
    }
}
