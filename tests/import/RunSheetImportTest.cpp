#include "import/RunSheetImport.h"
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
        import.load(path, XLSXReader::read(WorkbookWriter(sheets).file(), progress));
    }
    void assignGala() {
        import.setRole(2, ColumnRole::title);
        import.setRole(3, ColumnRole::guests);
        import.setRole(4, ColumnRole::duration);
        import.setRole(6, ColumnRole::ltc);
    }
    /// Builds a show, which must agree with the announced number of songs.
    std::optional<Show> create() {
        const std::int64_t announced = import.songCount();
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
    CHECK(import.preview().unread == 0);  // without titles there are no songs
    assignGala();
    RunSheetImport::Preview preview = import.preview();
    CHECK(preview.songs == 4);
    CHECK(preview.durations == 2);
    CHECK(preview.timecodes == 1);
    CHECK(preview.unread == 2);
    REQUIRE(preview.firstUnread.size() == 2);
    CHECK(preview.firstUnread[0].row == 7);
    CHECK(preview.firstUnread[0].column == 4);
    CHECK(preview.firstUnread[0].text == "3 min");
    CHECK(preview.firstUnread[1].column == 6);
    CHECK(preview.firstUnread[1].text == "10:00");

    // So many that the list leaves some out.
    std::string rows;
    for (int number = 1; number <= 300; ++number) {
        rows += row(number, cell("B", "Chanson") + cell("D", "3 min"));
    }
    load({rows});
    assignGala();
    preview = import.preview();
    CHECK(preview.unread == 299);
    CHECK(preview.firstUnread.size() == RunSheetImport::Preview::maximumListed);
}

TEST_CASE_FIXTURE(Fixture, "columns are listed up to the last one in use, with their headings") {
    load({gala, ""});
    std::vector<std::string> labels;
    for (std::int64_t column = 1; column <= import.usedColumns(); ++column) {
        labels.push_back(import.columnLabel(column));
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
        CHECK(import.songCount() == songs);
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
    import.load("/other.xlsx", ReaderError::notAZip);
    CHECK(import.errorMessage() == "Impossible de lire ce fichier Excel.");
    CHECK(create().value().name == "other");
}
