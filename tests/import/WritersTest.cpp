#include "import/RunSheetImport.h"
#include "import/RunSheetPreview.h"
#include "import/Workbooks.h"
#include "model/ShowJson.h"

#include <optional>
#include <string>

using namespace tessivo;
using namespace tessivo::test;

namespace {

/// What each writer was told to write, as the reader gives it: a date is a day number.
const char* const expectedCells =
    "A1=Fête de l’été 🎭;A3=Titre;C3=Invités;D3=Durée;E3=Timecode;F3=Jour;G3=Heure;H3=Total;"
    "AD3=Trente;A4=Été 🌞;C4=Inès Caradec + Malik Ferrand;D4=0:03:34;E4=10:00:14:00;F4=46194;"
    "G4=0.75;H4=3;AD4=bout;A5=Chanson <douce>;C5=Chœur d'Arvel / Léa;D5=225;A6=deux\nlignes;"
    "D6=3 min;E6=10:00;A7=  ;C7=personne;";

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
    for (const std::string writer :
         {"sheetjs", "sheetjs-shared", "exceljs", "exceljs-stream", "libxlsxwriter",
          "libxlsxwriter-constant", "gnumeric", "libreoffice", "zip-comment", "7z",
          "zipfile-stored", "zipfile-descriptors"}) {
        CAPTURE(writer);
        const XLSXWorkbook workbook = workbookAt("tests/import/workbooks/" + writer + ".xlsx");
        REQUIRE(workbook.sheets.size() == 2);
        CHECK(workbook.sheets[0].name == "Soirée & bal");
        CHECK(cellsOf(workbook.sheets[0]) == expectedCells);
        CHECK(workbook.sheets[1].name == "Cachée");
        CHECK(cellsOf(workbook.sheets[1]) == "A1=caché;");
    }
    // Sheets that a writer names by absolute paths aren't found.
    CHECK(workbookAt("tests/import/workbooks/openpyxl.xlsx").sheets.empty());
}

TEST_CASE("the run sheet of the example concert gives its songs, but for the two cells it spoils") {
    RunSheetImport import;
    import.load({workbookAt("examples/conducteur.xlsx")});
    import.headerRow = 3;
    import.startRow = 4;
    import.setRole(2, ColumnRole::title);
    import.setRole(3, ColumnRole::guests);
    import.setRole(4, ColumnRole::duration);
    import.setRole(5, ColumnRole::ltc);
    WorkProgress progress;
    const RunSheetPreview preview = previewOf(import, progress);
    REQUIRE(preview.unreadCells.size() == 2);
    CHECK(preview.unreadCells[0].text == "environ 12 s");
    CHECK(preview.unreadCells[1].text == "à caler");

    std::optional<Show> concert =
        decodeShow(readFile(TESSIVO_SOURCE_DIR "/examples/concert.tessivo"));
    REQUIRE(concert.has_value());
    REQUIRE(concert->songs.size() == 12);
    concert->songs[5].duration.reset();
    concert->songs[9].ltcTimecode.reset();
    const std::optional<Show> imported = import.createShow();
    REQUIRE(imported.has_value());
    CHECK(songsOf(*imported) == songsOf(*concert));
}
