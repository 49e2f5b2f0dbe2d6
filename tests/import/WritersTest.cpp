#include "import/RunSheetImport.h"
#include "model/ShowJson.h"
#include "support/TemporaryFolder.h"

#include <doctest/doctest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>

using namespace tessivo;

namespace {

using Cells = std::map<std::string, std::string>;

/// What each writer was told to write, as the reader gives it: a date is a day number.
const Cells expectedCells = {
    {"A1", "Fête de l’été 🎭"},
    {"A3", "Titre"},
    {"C3", "Invités"},
    {"D3", "Durée"},
    {"E3", "Timecode"},
    {"F3", "Jour"},
    {"G3", "Heure"},
    {"H3", "Total"},
    {"AD3", "Trente"},
    {"A4", "Été 🌞"},
    {"C4", "Inès Caradec + Malik Ferrand"},
    {"D4", "0:03:34"},
    {"E4", "10:00:14:00"},
    {"F4", "46194"},
    {"G4", "0.75"},
    {"H4", "3"},
    {"AD4", "bout"},
    {"A5", "Chanson <douce>"},
    {"C5", "Chœur d'Arvel / Léa"},
    {"D5", "225"},
    {"A6", "deux\nlignes"},
    {"D6", "3 min"},
    {"E6", "10:00"},
    {"A7", "  "},
    {"C7", "personne"},
};

Cells cellsOf(const XLSXWorkbook::Sheet& sheet) {
    Cells cells;
    for (const XLSXWorkbook::Row& row : sheet.rows) {
        for (std::size_t i = row.firstCell; i < row.endCell; ++i) {
            const std::int64_t column = sheet.cells[i].column;
            cells[XLSXReader::columnLetter(column) + std::to_string(row.index)] =
                sheet.text(row, column).value();
        }
    }
    return cells;
}

XLSXWorkbook readWorkbook(const std::string& name) {
    const std::string file = test::readFile(TESSIVO_SOURCE_DIR "/" + name);
    REQUIRE_FALSE(file.empty());
    XLSXReader::Result result = XLSXReader::read(file);
    REQUIRE(std::holds_alternative<XLSXWorkbook>(result));
    return std::get<XLSXWorkbook>(std::move(result));
}

/// The songs as lines of title, guests, length in seconds and timecode.
std::string songsOf(const Show& show) {
    std::string lines;
    for (const Song& song : show.songs) {
        lines += song.title + " |";
        for (const Guest& guest : song.guests) {
            lines += ' ' + guest.name + ',';
        }
        lines += " | " + (song.duration ? std::to_string(*song.duration) : "-");
        lines += " | " + song.ltcTimecode.value_or("-") + '\n';
    }
    return lines;
}

}  // namespace

TEST_CASE("what independent writers and archivers store is read alike") {
    const std::string writers[] = {"sheetjs",        "sheetjs-shared",
                                   "exceljs",        "exceljs-stream",
                                   "libxlsxwriter",  "libxlsxwriter-constant",
                                   "gnumeric",       "libreoffice",
                                   "zip-comment",    "7z",
                                   "zipfile-stored", "zipfile-descriptors"};
    for (const std::string& writer : writers) {
        CAPTURE(writer);
        const std::string name = "tests/import/workbooks/" + writer + ".xlsx";
        const XLSXWorkbook workbook = readWorkbook(name);
        REQUIRE(workbook.sheets.size() == 2);
        CHECK(workbook.sheets[0].name == "Soirée & bal");
        CHECK(cellsOf(workbook.sheets[0]) == expectedCells);
        CHECK(workbook.sheets[0].maxRow == 7);
        CHECK(workbook.sheets[0].maxCol == 30);
        CHECK(workbook.sheets[1].name == "Cachée");
        CHECK(cellsOf(workbook.sheets[1]) == Cells{{"A1", "caché"}});

        RunSheetImport import;
        import.load(name, workbook);
        CHECK(import.headerRow == 1);  // the merged title
        import.headerRow = 3;
        import.startRow = 4;
        CHECK(import.columnLabel(2) == "(vide)");
        CHECK(import.columnLabel(30) == "Trente");
        import.setRole(1, ColumnRole::title);
        import.setRole(3, ColumnRole::guests);
        import.setRole(4, ColumnRole::duration);
        import.setRole(5, ColumnRole::ltc);
        const std::optional<Show> show = import.createShow();
        REQUIRE(show.has_value());
        CHECK(show->name == writer);
        CHECK(songsOf(*show) ==
              "Été 🌞 | Inès Caradec, Malik Ferrand, | 214 | 10:00:14:00\n"
              "Chanson <douce> | Chœur d'Arvel, Léa, | 225 | -\n"
              "deux / lignes | | - | -\n");
    }
}

TEST_CASE("sheets that a writer names by absolute paths aren't found") {
    const XLSXWorkbook workbook = readWorkbook("tests/import/workbooks/openpyxl.xlsx");
    CHECK(workbook.sheets.empty());
    RunSheetImport import;
    import.load("openpyxl.xlsx", workbook);
    CHECK(import.errorMessage() == "Aucune feuille trouvée dans ce fichier.");
}

TEST_CASE("the run sheet of the example concert gives its songs, but for the two cells it spoils") {
    RunSheetImport import;
    import.load("conducteur.xlsx", readWorkbook("examples/conducteur.xlsx"));
    import.headerRow = 3;
    import.startRow = 4;
    import.setRole(2, ColumnRole::title);
    import.setRole(3, ColumnRole::guests);
    import.setRole(4, ColumnRole::duration);
    import.setRole(5, ColumnRole::ltc);
    const RunSheetImport::Preview preview = import.preview();
    REQUIRE(preview.firstUnread.size() == 2);
    CHECK(preview.firstUnread[0].text == "environ 12 s");
    CHECK(preview.firstUnread[1].text == "à caler");

    std::optional<Show> concert =
        decodeShow(test::readFile(TESSIVO_SOURCE_DIR "/examples/concert.tessivo"));
    REQUIRE(concert.has_value());
    REQUIRE(concert->songs.size() == 12);
    concert->songs[5].duration.reset();
    concert->songs[9].ltcTimecode.reset();
    const std::optional<Show> imported = import.createShow();
    REQUIRE(imported.has_value());
    CHECK(songsOf(*imported) == songsOf(*concert));
}
