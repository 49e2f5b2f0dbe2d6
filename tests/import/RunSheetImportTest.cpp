#include "import/ColumnLetters.h"
#include "import/RunSheetImport.h"
#include "import/RunSheetPreview.h"
#include "support/WorkbookWriter.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;
using namespace tessivo::test;

namespace {

std::string cell(const std::string& reference, const std::string& text) {
    return "<c r=\"" + reference + "\" t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
}

std::string row(int number, const std::string& cells) {
    return "<row r=\"" + std::to_string(number) + "\">" + cells + "</row>";
}

/// Headings in row 3, four songs between rows 4 and 9, a remark below, and cells that hold nothing.
const std::string gala =
    row(3, cell("B3", " Titre\n") + cell("C3", "Avec") + cell("D3", "Durée") + cell("F3", "TC")) +
    row(4, cell("B4", "\n Intro\nOuverture \n") + cell("C4", "Anna + Marc") + cell("D4", "3'45") +
               cell("F4", "10:00:00:00\nnote")) +
    row(5, cell("B5", " \n\t")) + row(6, cell("C6", "personne")) +
    row(7, cell("B7", "Chanson") + cell("C7", "/") + cell("D7", "3 min") + cell("F7", "10:00")) +
    row(8, cell("B8", "Reprise")) + row(9, cell("B9", "Final") + cell("D9", "1:00:00")) +
    row(12, cell("A12", "fin") + R"(<c r="H12"/>)") + row(15, R"(<c r="A15"/>)");

struct Fixture {
    RunSheetImport import;
    WorkProgress progress;

    void load(const std::vector<std::string>& sheets, const std::string& path = "/x/Gala 2.xlsx") {
        import.choose(path);
        import.load({XLSXReader::read(WorkbookWriter(sheets).file(), progress)});
    }
    RunSheetPreview outcome() { return previewOf(import, progress); }
    void assignGala() {
        import.setRole(2, ColumnRole::title);
        import.setRole(3, ColumnRole::guests);
        import.setRole(4, ColumnRole::duration);
        import.setRole(6, ColumnRole::ltc);
    }
    /// Builds a show, which must agree with the announced number of songs.
    std::optional<Show> create() {
        const std::int64_t announced = outcome().songs;
        std::optional<Show> show = import.createShow();
        CHECK(announced == (show ? std::ssize(show->songs) : 0));
        return show;
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a run sheet becomes a show") {
    load({gala});
    CHECK(import.headerRow == 3);
    CHECK(import.startRow == 4);
    assignGala();
    const std::optional<Show> show = create();
    REQUIRE(show.has_value());
    CHECK(show->name == "Gala 2");
    REQUIRE(show->songs.size() == 4);
    const Song& intro = show->songs[0];
    CHECK(intro.title == "Intro / Ouverture");
    CHECK(intro.duration == 225);
    CHECK(intro.ltcTimecode == "10:00:00:00");
    REQUIRE(intro.guests.size() == 2);
    CHECK(intro.guests[1].name == "Marc");
    const Song& song = show->songs[1];
    CHECK(song == Song{song.id, "Chanson", {}, std::nullopt, std::nullopt});
    CHECK(show->songs[2].title == "Reprise");
    CHECK(show->songs[3].duration == 3600);
    CHECK(import.createShow()->id != show->id);
    CHECK_FALSE(import.errorMessage().has_value());
}

TEST_CASE_FIXTURE(Fixture, "a preview tells what will be read, and which cells won't") {
    load({gala});
    import.setRole(4, ColumnRole::duration);
    CHECK(outcome().unread == 0);  // without titles there are no songs
    assignGala();
    RunSheetPreview preview = outcome();
    CHECK(preview.songs == 4);
    CHECK(preview.durations == 2);
    CHECK(preview.timecodes == 1);
    CHECK(preview.unread == 2);
    REQUIRE(preview.unreadCells.size() == 2);
    CHECK(preview.unreadCells[0].row == 7);
    CHECK(preview.unreadCells[0].column == 4);
    CHECK(preview.unreadCells[0].text == "3 min");
    CHECK(preview.unreadCells[1].column == 6);
    CHECK(preview.unreadCells[1].text == "10:00");

    // So many that the list leaves some out.
    std::string rows;
    for (int number = 1; number <= 300; ++number) {
        rows += row(number, cell("B", "Chanson") + cell("D", "3 min"));
    }
    load({rows});
    assignGala();
    preview = outcome();
    CHECK(preview.unread == 299);
    CHECK(preview.unreadCells.size() == RunSheetPreview::maximumListed);
    CHECK_FALSE(preview.isUnusuallyLarge());
    // Their common notation can be taken, but for one of them.
    REQUIRE(preview.notations.size() == 1);
    CHECK(preview.notations[0].cells == 299);
    CHECK(preview.notations[0].reading == "3:00");
    import.accept(Notation::units, true);
    import.refuse(3, 4, true);
    preview = outcome();
    CHECK(preview.durations == 298);
    CHECK(preview.unread == 1);
    CHECK(preview.taken == 298);
    CHECK(preview.unreadCells[0].isTaken);
    CHECK_FALSE(preview.unreadCells[1].isTaken);
    const std::vector<Song> songs = create().value().songs;
    CHECK(songs[0].duration == 180);
    CHECK_FALSE(songs[1].duration.has_value());
    import.selectSheet(0);
    CHECK_FALSE(import.accepts(Notation::units));
    assignGala();
    import.accept(Notation::units, true);
    CHECK(outcome().taken == 299);
}

TEST_CASE_FIXTURE(Fixture, "what is read but unlikely is told, and changed by nobody") {
    const std::string formula = R"(<c r="B9"><f>1/0</f></c>)";
    const std::string merged =
        R"(</sheetData><mergeCells><mergeCell ref="C3:C5"/>)"
        R"(<mergeCell ref="C1:D1"/><mergeCell ref="C1:C2"/></mergeCells><sheetData>)";
    const std::string hidden =
        R"(</sheetData><cols><col min="6" max="9" hidden="1"/></cols><sheetData>)";
    load({row(1, cell("B1", "Titre")) + hidden +
          row(2, cell("B2", "Un") + cell("D2", "4") + cell("F2", "10:00:00:00")) +
          row(3, cell("B3", "Deux") + cell("C3", "Anna") + cell("D3", "3:45:00") +
                     cell("F3", "11:00:00:00")) +
          row(4, cell("B4", "ENTRACTE") + cell("D4", "-3'45") + cell("F4", "10:30:00:00")) +
          row(5, cell("B5", "SET 2") + cell("D5", "3'60") + cell("F5", "10:30:00:00")) +
          row(6, cell("B6", "0.3125") + cell("F6", "24:00:00:00")) + R"(<row r="7" hidden="1">)" +
          cell("B7", "#DIV/0!") + "</row>" +
          row(8, cell("B8", "12/05/2026") + cell("D8", "0:03:45") + cell("F8", "10:45:00:00")) +
          row(9, formula + R"(<c r="C9"/>)") + row(10, R"(<c r="B10"/>)") + merged});
    assignGala();
    std::string found;
    for (const RunSheetPreview::DoubtfulCell& doubtful : outcome().doubtfulCells) {
        found += columnLetter(doubtful.column) + std::to_string(doubtful.row) + ' ' +
                 std::string(textOf(doubtful.doubt)) + '\n';
    }
    CHECK(found == R"(F1 colonne masquée dans le tableur
D2 moins de 20 s
D3 plus de 20 minutes
C3 guests fusionnés : seul ce morceau les reçoit
B4 pas un morceau ?
D4 durée négative
F4 timecode avant celui du morceau précédent
B5 pas un morceau ?
D5 60 ou plus dans un champ de la durée
F5 même timecode qu'un morceau plus haut
B6 le titre est un nombre
F6 timecode qu'aucune entrée n'envoie
B7 le titre est une erreur du tableur
B7 ligne masquée dans le tableur
B8 le titre est une date
B9 formule sans résultat : pas de morceau
)");
    CHECK(create().value().songs.size() == 7);
}

TEST_CASE_FIXTURE(Fixture, "what is too much is asked about, cut or refused") {
    const std::string crowd =
        cell("B", std::string(40'000, 'x')) + cell("C", "a" + std::string(20'000, '/') + "b");
    std::string guests = "a";
    for (int i = 0; i < 100; ++i) {
        guests += "+a";
    }
    load({row(1, crowd) + row(2, crowd), row(1, cell("B", "x") + cell("C", guests))});
    assignGala();
    RunSheetPreview preview = outcome();
    CHECK(preview.mostGuests == 2);
    REQUIRE(preview.doubts == 1);
    CHECK(preview.doubtfulCells[0].doubt == Doubt::cutText);
    CHECK(preview.doubtfulCells[0].text == std::string(200, 'x') + "…");
    import.selectSheet(1);
    import.startRow = 1;
    assignGala();
    CHECK(outcome().isUnusuallyLarge());  // 101 guests

    // One text in cells without end is kept once, and a show of it is refused.
    std::string rows;
    for (int i = 1; i <= 1000; ++i) {
        rows += R"(<row r=")" + std::to_string(i) + R"("><c r="B" t="s"><v>0</v></c></row>)";
    }
    import.load({XLSXReader::read(workbookOf(rows, {"<t>" + std::string(30'000, 'x') + "</t>"}),
                                  progress)});
    import.setRole(2, ColumnRole::title);
    CHECK(outcome().isUnusuallyLarge());
    CHECK_FALSE(import.createShow().has_value());
    CHECK(import.errorMessage().value().starts_with("Ce tableau ferait un show trop grand."));
    progress.isCancelled = true;
    CHECK(outcome().songs == 1);
}

TEST_CASE_FIXTURE(Fixture, "columns are listed up to the last one in use, with their headings") {
    load({gala, ""});
    std::vector<std::string> labels;
    for (std::int64_t column = 1; column <= import.usedColumns(); ++column) {
        labels.emplace_back(import.columnLabel(column));
    }
    CHECK(labels == std::vector<std::string>{"(vide)", "Titre", "Avec", "Durée", "(vide)", "TC"});
    import.headerRow = 5;
    CHECK(import.columnLabel(2) == "(vide)");
    import.selectSheet(1);
    CHECK(import.usedColumns() == 0);
    import.selectSheet(2);  // no sheet
    CHECK(import.usedColumns() == 0);
    CHECK(import.columnLabel(1).empty());
    load({row(1, cell("zzzzzzzzzzzzz1", "x"))});  // the greatest column that is read
    CHECK(import.usedColumns() > 5'000'000'000'000'000'000);
}

TEST_CASE_FIXTURE(Fixture, "choosing a sheet suggests its rows and takes the roles back") {
    load({gala, "", "<row r=\"9223372036854775807\"><c r=\"A1\"><v>1</v></c></row>"});
    assignGala();
    import.selectSheet(1);
    CHECK(import.role(2) == ColumnRole::ignore);
    CHECK(import.headerRow == 1);
    CHECK(import.startRow == 2);
    import.selectSheet(0);
    CHECK(import.headerRow == 3);
    CHECK(import.startRow == 4);
    for (const std::int64_t nowhere : {std::int64_t{-1}, std::int64_t{3}, INT64_MIN, INT64_MAX}) {
        import.selectSheet(nowhere);
        CHECK(import.sheet() == nullptr);
        CHECK(import.headerRow == 3);  // stays
        CHECK_FALSE(create().has_value());
    }
    import.selectSheet(2);
    CHECK(import.headerRow == INT64_MAX);
    CHECK(import.startRow == INT64_MAX);
}

TEST_CASE_FIXTURE(Fixture, "the leftmost of the columns with one role counts") {
    load({gala});
    import.setRole(3, ColumnRole::title);
    import.setRole(2, ColumnRole::title);
    CHECK(import.counts(2));
    CHECK_FALSE(import.counts(3));
    CHECK(import.counts(4));  // ignored, like any number of others
    CHECK(create().value().songs.size() == 4);
    import.setRole(2, ColumnRole::ignore);
    CHECK(create().value().songs[1].title == "personne");
}

TEST_CASE_FIXTURE(Fixture, "the first row of songs may be any row, and the title may be missing") {
    load({gala});
    import.startRow = 2000;
    CHECK_FALSE(create().has_value());
    CHECK(import.errorMessage() == "Choisis au moins une colonne pour le titre du morceau.");
    import.setRole(2, ColumnRole::title);
    const std::pair<std::int64_t, std::int64_t> rows[] = {
        {INT64_MIN, 5}, {3, 5}, {4, 4}, {9, 1}, {10, 0}, {12, 0}, {13, 0}, {INT64_MAX, 0}};
    for (const auto& row : rows) {
        CAPTURE(row.first);
        const auto& [startRow, songs] = row;
        import.startRow = startRow;
        CHECK(outcome().songs == songs);
        CHECK(create().has_value() == (songs > 0));
        if (songs == 0) {
            CHECK(import.errorMessage() == (startRow > 12
                                                ? "La ligne de départ dépasse la fin du tableau."
                                                : "Aucun morceau trouvé avec ces réglages."));
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "a show takes the name typed, or else that of the file") {
    const std::pair<const char*, const char*> paths[] = {{"/x/Gala.xlsx", "Gala"},
                                                         {"Gala.v2.xlsx", "Gala.v2"},
                                                         {"/x.y/Gala", "Gala"},
                                                         {"/x/.xlsx", ".xlsx"}};
    for (const auto& [path, name] : paths) {
        load({gala}, path);
        CHECK(import.fileName() == name);
        CHECK(import.showName == name);
    }
    load({gala});
    assignGala();
    const std::pair<const char*, const char*> names[] = {
        {"", "Gala 2"}, {" \t\u00A0", "Gala 2"}, {" Soirée ", " Soirée "}};
    for (const auto& [typed, name] : names) {
        import.showName = typed;
        CHECK(create().value().name == name);
    }
}

TEST_CASE_FIXTURE(Fixture, "a file that fails leaves the workbook before it in place") {
    load({gala});
    assignGala();
    load({});
    CHECK(import.errorMessage() == "Aucune feuille trouvée dans ce fichier.");
    CHECK(import.role(2) == ColumnRole::title);
    import.choose("/other.xlsx");
    import.load({ReaderError::notAZip, "conseil"});
    CHECK(import.advice() == "conseil");
    CHECK(import.errorMessage() == "Impossible de lire ce fichier Excel.");
    CHECK(create().value().name == "other");
    CHECK_FALSE(import.isErrorPast());
    load({"", gala, ""});
    CHECK(import.isErrorPast());
    CHECK(import.errorMessage() == "Impossible de lire ce fichier Excel.");
    CHECK(import.sheetWithCells() == 1);
    import.selectSheet(2);
    CHECK(import.sheetWithCells() == 1);  // around the end
    import.selectSheet(1);
    CHECK_FALSE(import.sheetWithCells().has_value());
}
