#include "import/RunSheetImport.h"

#include "base/Text.h"
#include "import/RunSheetText.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <ranges>
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
auto rowsFrom(const XLSXWorkbook::Sheet& sheet, std::int64_t start) {
    return std::ranges::subrange(
        std::ranges::lower_bound(sheet.rows, start, {}, &XLSXWorkbook::Row::index),
        sheet.rows.end());
}

/// The cells of one song. A missing column or cell is an empty text.
struct SongCells {
    std::int64_t row = 0;
    std::string_view title;  ///< trimmed, never empty
    std::string_view guests;
    std::string_view duration;
    std::string_view ltc;
};

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

template <typename Visit>
void RunSheetImport::forEachSong(Visit&& visit) const {
    const XLSXWorkbook::Sheet* current = sheet();
    const auto titleColumn = columnWithRole(ColumnRole::title);
    if (!current || !titleColumn) {
        return;
    }
    const auto guestsColumn = columnWithRole(ColumnRole::guests);
    const auto durationColumn = columnWithRole(ColumnRole::duration);
    const auto ltcColumn = columnWithRole(ColumnRole::ltc);
    for (const XLSXWorkbook::Row& row : rowsFrom(*current, startRow)) {
        const auto cell = [&](std::optional<std::int64_t> column) {
            return column ? current->text(row, *column).value_or("") : std::string_view();
        };
        const std::string_view title = trimSpacesAndLineBreaks(cell(titleColumn));
        if (!title.empty()) {
            visit(SongCells{row.index, title, cell(guestsColumn), cell(durationColumn),
                            cell(ltcColumn)});
        }
    }
}

RunSheetImport::Preview RunSheetImport::preview() const {
    Preview preview;
    const auto durationColumn = columnWithRole(ColumnRole::duration).value_or(0);
    const auto ltcColumn = columnWithRole(ColumnRole::ltc).value_or(0);
    const auto tally = [&](bool isRead, std::int64_t& count, const SongCells& song,
                           std::int64_t column, std::string_view text) {
        const std::string_view shown = trimSpacesAndLineBreaks(text);
        if (isRead) {
            ++count;
        } else if (!shown.empty()) {
            ++preview.unread;
            if (preview.firstUnread.size() < Preview::maximumListed) {
                preview.firstUnread.push_back({song.row, column, std::string(shown)});
            }
        }
    };
    forEachSong([&](const SongCells& song) {
        ++preview.songs;
        tally(parseDuration(song.duration).has_value(), preview.durations, song, durationColumn,
              song.duration);
        tally(parseLtc(song.ltc).has_value(), preview.timecodes, song, ltcColumn, song.ltc);
    });
    return preview;
}

std::optional<Show> RunSheetImport::createShow() {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current) {
        return std::nullopt;
    }
    if (!columnWithRole(ColumnRole::title)) {
        errorMessage_ = "Choisis au moins une colonne pour le titre du morceau.";
        return std::nullopt;
    }
    if (current->maxRow < startRow) {
        errorMessage_ = "La ligne de départ dépasse la fin du tableau.";
        return std::nullopt;
    }
    Show show;
    show.songs = makeSongs();
    if (show.songs.empty()) {
        errorMessage_ = "Aucun morceau trouvé avec ces réglages.";
        return std::nullopt;
    }
    assert(show.songs.size() <= current->rows.size());
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

bool RunSheetImport::counts(std::int64_t column) const {
    const ColumnRole own = role(column);
    return own == ColumnRole::ignore || columnWithRole(own) == column;
}

std::vector<Song> RunSheetImport::makeSongs() const {
    std::vector<Song> songs;
    forEachSong([&](const SongCells& cells) {
        Song& song = songs.emplace_back();
        song.title = onOneLine(cells.title);
        song.guests = splitGuests(cells.guests);
        song.duration = parseDuration(cells.duration);
        song.ltcTimecode = parseLtc(cells.ltc);
    });
    return songs;
}

}  // namespace tessivo
