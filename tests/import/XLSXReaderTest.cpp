#include "import/ColumnLetters.h"
#include "import/Workbooks.h"
#include "support/WorkbookWriter.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;
using namespace tessivo::test;

namespace {

std::string cellsOfOnlySheet(const std::string& file) {
    const XLSXWorkbook workbook = workbookIn(file);
    return workbook.sheets.size() == 1 ? cellsOf(workbook.sheets[0]) : "not one sheet";
}

std::optional<ReaderError> errorOf(const std::string& file) {
    WorkProgress progress;
    const XLSXReader::Result result = XLSXReader::read(file, progress);
    const auto* error = std::get_if<ReaderError>(&result);
    return error ? std::optional(*error) : std::nullopt;
}

}  // namespace

TEST_CASE("column letters count in bijective base 26") {
    const std::pair<std::int64_t, const char*> rows[] = {
        {1, "A"},    {26, "Z"},    {27, "AA"},     {53, "BA"},
        {702, "ZZ"}, {703, "AAA"}, {16384, "XFD"}, {2'580'398'988'131'886'038, "ZZZZZZZZZZZZZ"}};
    for (const auto& [number, letters] : rows) {
        CHECK(columnLetter(number) == letters);
        CHECK(columnIndex(std::string(letters) + "12") == number);
    }
    CHECK(columnLetter(0).empty());
    CHECK(columnLetter(INT64_MIN).empty());
    CHECK(columnIndex("a1") == 33);
    CHECK(columnIndex("zzzzzzzzzzzzz") > 0);  // the greatest: within the signed range
    for (const char* reference : {"", "1", "12A", "$A$1", "é1", "AAAAAAAAAAAAAA1"}) {
        CAPTURE(reference);
        CHECK(columnIndex(reference) == 0);
    }
}

TEST_CASE("the cells of a sheet are its stored values") {
    struct Row {
        const char* sheetData;
        const char* cells;
    };
    const Row rows[] = {
        {"", ""},
        {R"(<row r="5"><c r="C5"><v>7</v></c></row>)", "C5=7;"},
        {R"(<row r="1"><c r="A1" t="n"><v>2.6041666666666665E-3</v></c>)"
         R"(<c r="B1" t="b"><v>1</v></c><c r="C1" t="e"><v>#N/A</v></c>)"
         R"(<c r="D1" t="str"><f>A1&amp;"x"</f><v>3x</v></c></row>)",
         "A1=2.6041666666666665E-3;B1=1;C1=#N/A;D1=3x;"},
        {R"(<row r="1"><c r="A1" t="inlineStr"><is><r><t>Été </t></r><r><t>&lt;&#233;&gt;</t></r>)"
         R"(</is></c></row>)",
         "A1=Été <é>;"},
        // Shared strings: two runs joined, an empty one, and indexes that lead nowhere.
        {R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c r="B1" t="s"><v>1</v></c>)"
         R"(<c r="C1" t="s"><v>2</v></c><c r="D1" t="s"><v>3</v></c><c r="E1" t="s"><v>-1</v></c>)"
         R"(<c r="F1" t="s"><v>+0</v></c><c r="G1" t="s"><v>x</v></c><c r="H1" t="s"><v/></c></row>)",
         "A1=Anna + Léa;C1=un;D1=3;E1=-1;F1=Anna + Léa;G1=x;"},
        // Empty cells and rows leave nothing behind.
        {R"(<row r="3"><c r="Z3" s="4"/><c r="Y3"><v></v></c></row><row r="9"/>)", ""},
        // Without a reference: no cell; without a number: row 0.
        {R"(<row><c><v>1</v></c><c r="B1"><v>2</v></c></row>)", "B0=2;"},
        {R"(<row r="x"><c r="A1"><v>1</v></c></row><row r="-2"><c r="A1"><v>2</v></c></row>)",
         "A-2=2;A0=1;"},
        // Out of order, and the later of two replaces the earlier.
        {R"(<row r="2"><c r="C2"><v>c</v></c><c r="A2"><v>a</v></c><c r="C2"><v>d</v></c>)"
         R"(<c r="A2"/></row><row r="1"><c r="A1"><v>e</v></c></row>)",
         "A1=e;A2=a;C2=d;"},
        {R"(<row r="1"><c r="A1"><v>a</v></c><c r="D1"><v>d</v></c></row>)"
         R"(<row r="2"><c r="A2"><v>b</v></c></row><row r="1"><c r="B1"><v>c</v></c></row>)"
         R"(<row r="1"/>)",
         "B1=c;A2=b;"},
        // Cells outside a row, and elements with a prefix, aren't understood.
        {R"(<c r="A1"><v>1</v></c><x:row r="1"><x:c r="A1"><x:v>1</x:v></x:c></x:row>)", ""},
        // What an unfinished row held is lost, and so is what follows a fault.
        {R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="2"><c r="A2"><v>2</v></c></rwo>)",
         "A1=1;"},
        {R"(<row r="2"><c r="A2"><v>2</v></c></rwo>)", ""},
        {R"(<row r="1"><c r="A1"><v>1</v></c><row r="2"><c r="B2"><v>2</v></c></row>)"
         R"(<c r="C1"><v>3</v></c></row>)",
         "B2=2;"},
        // As far as numbers go.
        {R"(<row r="9223372036854775807"><c r="XFD1"><v>1</v></c></row>)"
         R"(<row r="9223372036854775808"><c r="AAAAAAAAAAAAAA1"><v>1</v></c></row>)",
         "XFD9223372036854775807=1;"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.sheetData);
        CHECK(cellsOfOnlySheet(
                  workbookOf(row.sheetData, {"<r><t>Anna</t></r><r><t> + Léa</t></r>", "<t/>",
                                             "<t>u</t><rPh><t>n</t></rPh>"})) == row.cells);
    }
}

TEST_CASE("sheets come in the workbook's order, and those without a part are left out") {
    WorkbookWriter parts({R"(<row r="1"><c r="A1"><v>1</v></c></row>)",
                          R"(<row r="1"><c r="A1"><v>2</v></c></row>)"});
    parts.workbook = R"(<workbook><sheets><sheet name="Deux" state="hidden" r:id="rId2"/>)"
                     R"(<sheet name="no id"/><sheet r:id="rId1"/><sheet name="other" id="rId1"/>)"
                     R"(<sheet name="chart" r:id="chart"/><sheet name="absolute" r:id="abs"/>)"
                     R"(<sheet name="missing" r:id="gone"/><sheet name="nowhere" r:id="?"/>)"
                     R"(<sheet name="Deux" r:id="rId1"/></sheets></workbook>)";
    parts.relationships =
        R"(<Relationships><Relationship Id="rId1" Target="worksheets/sheet2.xml"/>)"
        R"(<Relationship Id="rId2" Target="worksheets/sheet2.xml"/>)"
        R"(<Relationship Id="rId1" Target="worksheets/sheet1.xml"/>)"
        R"(<Relationship Id="rId1" Target="/xl/worksheets/sheet2.xml"/>)"
        R"(<Relationship Id="abs" Target="/xl/worksheets/sheet1.xml"/>)"
        R"(<Relationship Id="chart" Target="chartsheets/sheet1.xml"/>)"
        R"(<Relationship Id="gone" Target="worksheets/sheet9.xml"/><Relationship Id="x"/>)"
        R"(<Relationship Target="worksheets/sheet1.xml"/></Relationships>)";
    const XLSXWorkbook workbook = workbookIn(parts.file());
    REQUIRE(workbook.sheets.size() == 2);
    CHECK(workbook.sheets[0].name == "Deux");
    CHECK(workbook.sheets[1].name == "Deux");
    CHECK(cellsOf(workbook.sheets[0]) + cellsOf(workbook.sheets[1]) == "A1=2;A1=1;");
}

TEST_CASE("a missing part is an error only where nothing can be read without it") {
    struct Row {
        const char* missing;
        std::optional<ReaderError> error;
        const char* cells;
    };
    const Row rows[] = {
        {"xl/workbook.xml", ReaderError::corrupt, ""},
        {"xl/_rels/workbook.xml.rels", ReaderError::corrupt, ""},
        {"xl/sharedStrings.xml", std::nullopt, "A1=0;"},
        {"xl/worksheets/sheet1.xml", std::nullopt, "not one sheet"},
        {"none", std::nullopt, "A1=zéro;"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.missing);
        auto members =
            WorkbookWriter({R"(<row r="1"><c r="A1" t="s"><v>0</v></c></row>)"}, {"<t>zéro</t>"})
                .members();
        members.push_back({.name = "xl/worksheets/sheet1.xml"});  // the first of a name is read
        std::string claimingMuch = zipOf(members);
        const std::size_t record = claimingMuch.find("PK\x01\x02");
        const std::size_t name = claimingMuch.find(row.missing, record);
        if (name != std::string::npos) {
            claimingMuch.replace(name - 26, 4, littleEndian(0xFFFFFFFF, 4));
        }
        auto unreadable = members;
        std::erase_if(members, [&](const ZipMember& member) { return member.name == row.missing; });
        for (ZipMember& member : unreadable) {
            member.method = member.name == row.missing ? 12 : 8;  // none that can be extracted
        }
        for (const std::string& file : {zipOf(members), zipOf(unreadable), claimingMuch}) {
            CHECK(errorOf(file) == row.error);
            CHECK((row.error || cellsOfOnlySheet(file) == row.cells));
        }
    }
}

TEST_CASE("what is no archive or can't be read is not a ZIP") {
    CHECK(errorOf("") == ReaderError::notAZip);
    CHECK(errorOf("<html>") == ReaderError::notAZip);
    CHECK(errorOf(zipOf({})) == ReaderError::notAZip);
    CHECK(errorOf(zipOf({{.name = "a"}})) == ReaderError::corrupt);
}

TEST_CASE("UTF-16 parts and texts longer than the pieces they come in are read") {
    // As long as spreadsheets store them, which count a 🎭 twice.
    const std::string before(300'000, ' ');
    const std::pair<std::size_t, bool> lengths[] = {{32'765, false}, {32'766, true}};
    for (const auto& [length, isCut] : lengths) {
        const std::string song = std::string(length, 'x') + "🎭";
        const XLSXWorkbook workbook =
            workbookIn(workbookOf(before + R"(<row r="1"><c r="A1"><v>)" + song +
                                  R"(</v></c><c r="B1"><v>1</v></c></row>)"));
        const XLSXWorkbook::Sheet& sheet = workbook.sheets.at(0);
        const XLSXWorkbook::Cell& cell = sheet.cells.at(0);
        CHECK(sheet.text(1, 1) == song.substr(0, isCut ? length : song.size()));
        CHECK(sheet.texts->isCut(cell.text) == isCut);
        CHECK_FALSE(sheet.texts->isCut(sheet.cells.at(1).text));
    }

    std::string wide = "\xFF\xFE";
    for (const char c : std::string(R"(<a><row r="1"><c r="A1"><v>x</v></c></row></a>)")) {
        wide += {c, '\0'};
    }
    WorkbookWriter parts({""});
    parts.sheets[0] = wide;
    CHECK(cellsOfOnlySheet(parts.file()) == "A1=x;");
}
