#include "import/RunSheetImport.h"

#include "base/Text.h"
#include "import/RunSheetText.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <variant>

namespace tessivo {
namespace {

std::string nameWithoutExtension(const FileLocation& location) {
    const std::string name = location.substr(location.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

/// The rows from `start` on that hold anything: a file may skip as many numbers as it likes.
std::span<const XLSXWorkbook::Row> rowsFrom(const XLSXWorkbook::Sheet& sheet, std::int64_t start) {
    const auto first = std::ranges::lower_bound(sheet.rows, start, {}, &XLSXWorkbook::Row::index);
    return {first, sheet.rows.end()};
}

/// The title of the row's song; empty when the row is no song.
std::string_view titleOf(const XLSXWorkbook::Sheet& sheet, const XLSXWorkbook::Row& row,
                         std::int64_t column) {
    return trimSpacesAndLineBreaks(sheet.text(row, column).value_or(""));
}

std::string onOneLine(std::string_view title) {
    std::string line;
    for (const char c : title) {
        if (c == '\n') {
            line += " / ";
        } else {
            line += c;
        }
    }
    return line;
}

}  // namespace

void RunSheetImport::load(const FileLocation& location, XLSXReader::Result result) {
    fileName_ = nameWithoutExtension(location);
    showName = fileName_;
    auto* workbook = std::get_if<XLSXWorkbook>(&result);
    if (!workbook) {
        errorMessage_ = "Impossible de lire ce fichier Excel.";
    } else if (workbook->sheets.empty()) {
        errorMessage_ = "Aucune feuille trouvée dans ce fichier.";
    } else {
        workbook_ = std::move(*workbook);
        selectSheet(0);
    }
}

void RunSheetImport::selectSheet(std::int64_t index) {
    selectedSheetIndex_ = index;
    resetRowGuesses();
}

ColumnRole RunSheetImport::role(std::int64_t column) const {
    const auto found = columnRoles_.find(column);
    return found == columnRoles_.end() ? ColumnRole::ignore : found->second;
}

const XLSXWorkbook::Sheet* RunSheetImport::sheet() const {
    if (!workbook_ || selectedSheetIndex_ < 0 ||
        selectedSheetIndex_ >= std::ssize(workbook_->sheets)) {
        return nullptr;
    }
    return &workbook_->sheets[static_cast<std::size_t>(selectedSheetIndex_)];
}

std::int64_t RunSheetImport::usedColumns() const {
    const XLSXWorkbook::Sheet* current = sheet();
    return current ? current->maxCol : 0;
}

std::string RunSheetImport::columnLabel(std::int64_t column) const {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current) {
        return {};
    }
    const std::string_view heading =
        trimSpacesAndLineBreaks(current->text(headerRow, column).value_or(""));
    return std::string(heading.empty() ? "(vide)" : heading);
}

std::int64_t RunSheetImport::songCount() const {
    const XLSXWorkbook::Sheet* current = sheet();
    const auto titleColumn = columnWithRole(ColumnRole::title);
    if (!current || !titleColumn || current->maxRow < startRow) {
        return 0;
    }
    return std::ranges::count_if(rowsFrom(*current, startRow), [&](const XLSXWorkbook::Row& row) {
        return !titleOf(*current, row, *titleColumn).empty();
    });
}

std::optional<Show> RunSheetImport::createShow() {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current) {
        return std::nullopt;
    }
    const auto titleColumn = columnWithRole(ColumnRole::title);
    if (!titleColumn) {
        errorMessage_ = "Choisis au moins une colonne pour le titre du morceau.";
        return std::nullopt;
    }
    if (current->maxRow < startRow) {
        errorMessage_ = "La ligne de départ dépasse la fin du tableau.";
        return std::nullopt;
    }
    Show show;
    show.songs = makeSongs(*current, *titleColumn);
    if (show.songs.empty()) {
        errorMessage_ = "Aucun morceau trouvé avec ces réglages.";
        return std::nullopt;
    }
    show.name = trimSpaces(showName).empty() ? fileName_ : showName;
    return show;
}

void RunSheetImport::resetRowGuesses() {
    columnRoles_.clear();
    if (const XLSXWorkbook::Sheet* current = sheet()) {
        headerRow = current->rows.empty() ? 1 : current->rows.front().index;
        startRow = headerRow == INT64_MAX ? headerRow : headerRow + 1;
    }
}

std::optional<std::int64_t> RunSheetImport::columnWithRole(ColumnRole role) const {
    const auto found =
        std::ranges::find(columnRoles_, role, &std::pair<const std::int64_t, ColumnRole>::second);
    return found == columnRoles_.end() ? std::nullopt : std::optional(found->first);
}

std::vector<Song> RunSheetImport::makeSongs(const XLSXWorkbook::Sheet& sheet,
                                            std::int64_t titleColumn) const {
    const auto guestsColumn = columnWithRole(ColumnRole::guests);
    const auto durationColumn = columnWithRole(ColumnRole::duration);
    const auto ltcColumn = columnWithRole(ColumnRole::ltc);
    std::vector<Song> songs;
    for (const XLSXWorkbook::Row& row : rowsFrom(sheet, startRow)) {
        const std::string_view title = titleOf(sheet, row, titleColumn);
        if (title.empty()) {
            continue;
        }
        // A missing column or cell reads as an empty text, which gives no guests and no value.
        const auto cell = [&](std::optional<std::int64_t> column) {
            return column ? sheet.text(row, *column).value_or("") : std::string_view();
        };
        Song& song = songs.emplace_back();
        song.title = onOneLine(title);
        song.guests = splitGuests(cell(guestsColumn));
        song.duration = parseDuration(cell(durationColumn));
        song.ltcTimecode = parseLtc(cell(ltcColumn));
    }
    return songs;
}

}  // namespace tessivo
