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

/// About the memory of a song, in bytes; its guests weigh more than their names.
std::size_t sizeOf(const Song& song) {
    std::size_t size = sizeof(Song) + song.title.size();
    for (const Guest& guest : song.guests) {
        size += sizeof(Guest) + guest.name.size();
    }
    return size;
}

}  // namespace

void RunSheetImport::choose(const FileLocation& location) {
    fileName_ = nameWithoutExtension(location);
    showName = fileName_;
}

void RunSheetImport::load(RunSheetFile file) {
    auto* workbook = std::get_if<XLSXWorkbook>(&file.result);
    if (!workbook) {
        fail("Impossible de lire ce fichier Excel.");
    } else if (workbook->sheets.empty()) {
        fail("Aucune feuille trouvée dans ce fichier.");
    } else {
        workbook_ = std::make_shared<const XLSXWorkbook>(std::move(*workbook));
        isErrorPast_ = errorMessage_.has_value();
        selectSheet(0);
    }
    advice_ = std::move(file.advice);
}

void RunSheetImport::fail(std::string message) {
    errorMessage_ = std::move(message);
    advice_.clear();
    isErrorPast_ = false;
}

void RunSheetImport::selectSheet(std::int64_t index) {
    selectedSheetIndex_ = index;
    accepted_.clear();
    refusedCells_.clear();
    resetRowGuesses();
}

std::optional<std::int64_t> RunSheetImport::sheetWithCells() const {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current || !current->cells.empty()) {
        return std::nullopt;
    }
    const std::int64_t count = std::ssize(workbook_->sheets);
    for (std::int64_t step = 1; step < count; ++step) {
        const std::int64_t index = (selectedSheetIndex_ + step) % count;
        if (!workbook_->sheets[static_cast<std::size_t>(index)].cells.empty()) {
            return index;
        }
    }
    return std::nullopt;
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

std::string_view RunSheetImport::columnLabel(std::int64_t column) const {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current) {
        return {};
    }
    const std::string_view heading =
        trimSpacesAndLineBreaks(current->text(headerRow, column).value_or(""));
    return heading.empty() ? "(vide)" : heading;
}

void RunSheetImport::accept(Notation notation, bool accepted) {
    if (accepted) {
        accepted_.insert(notation);
    } else {
        accepted_.erase(notation);
    }
}

void RunSheetImport::refuse(std::int64_t row, std::int64_t column, bool refused) {
    if (refused) {
        refusedCells_.emplace(row, column);
    } else {
        refusedCells_.erase({row, column});
    }
}

bool RunSheetImport::takes(const Reading& reading, std::int64_t row, std::int64_t column) const {
    return accepts(reading.notation) && !refusedCells_.contains({row, column});
}

RunSheetColumns RunSheetImport::columns() const {
    return {columnWithRole(ColumnRole::title), columnWithRole(ColumnRole::guests),
            columnWithRole(ColumnRole::duration), columnWithRole(ColumnRole::ltc)};
}

std::optional<Show> RunSheetImport::createShow() {
    const XLSXWorkbook::Sheet* current = sheet();
    if (!current) {
        return std::nullopt;
    }
    if (!columnWithRole(ColumnRole::title)) {
        fail("Choisis au moins une colonne pour le titre du morceau.");
        return std::nullopt;
    }
    if (current->maxRow < startRow) {
        fail("La ligne de départ dépasse la fin du tableau.");
        return std::nullopt;
    }
    std::optional<std::vector<Song>> songs = makeSongs(*current);
    if (!songs) {
        fail("Ce tableau ferait un show trop grand. Choisis d'autres colonnes ou une autre ligne.");
        return std::nullopt;
    }
    if (songs->empty()) {
        fail("Aucun morceau trouvé avec ces réglages.");
        return std::nullopt;
    }
    assert(songs->size() <= current->rows.size());
    Show show;
    show.songs = std::move(*songs);
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

Song RunSheetImport::songOf(const SongCells& cells, const RunSheetColumns& columns) const {
    const std::int64_t row = cells.row.index;
    Song song;
    song.title = onOneLine(cells.title);
    song.guests = splitGuests(cells.guests);
    song.duration = parseDuration(cells.duration);
    song.ltcTimecode = parseLtc(cells.ltc);
    if (!song.duration && columns.duration) {
        const auto reading = likelyDuration(cells.duration);
        if (reading && takes(*reading, row, *columns.duration)) {
            song.duration = reading->seconds;
        }
    }
    if (!song.ltcTimecode && columns.ltc) {
        const auto reading = likelyTimecode(cells.ltc);
        if (reading && takes(*reading, row, *columns.ltc)) {
            song.ltcTimecode = reading->text;
        }
    }
    return song;
}

/// None when they are too many.
std::optional<std::vector<Song>> RunSheetImport::makeSongs(const XLSXWorkbook::Sheet& sheet) const {
    std::vector<Song> songs;
    std::size_t size = 0;
    const RunSheetColumns columns = this->columns();
    forEachSong(sheet, columns, startRow, [&](const SongCells& cells) {
        songs.push_back(songOf(cells, columns));
        // What is read counts too: a long text that many cells share would hold up the import.
        size += sizeOf(songs.back()) + cells.duration.size() + cells.ltc.size();
        return size <= maximumShowSize;
    });
    return size <= maximumShowSize ? std::optional(std::move(songs)) : std::nullopt;
}

}  // namespace tessivo
