#include "import/RunSheetPreview.h"

#include "base/CheckedArithmetic.h"
#include "base/Text.h"
#include "import/RunSheetImport.h"
#include "import/RunSheetRows.h"
#include "import/RunSheetText.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace tessivo {
namespace {

/// A timecode as one number that grows with it.
std::optional<std::int64_t> orderOf(std::string_view timecode) {
    std::optional<std::int64_t> order = 0;
    for (const std::int64_t field : integersBetween(timecode, ":")) {
        order = multiplyAdd(order, 100, field);
    }
    return order;
}

/// Collects what one pass over the songs of a sheet tells.
class Previewer {
public:
    Previewer(const RunSheetImport& import, const XLSXWorkbook::Sheet& sheet)
        : import_(import), sheet_(sheet), columns_(import.columns()) {}

    void add(const SongCells& song) {
        ++preview_.songs;
        const std::int64_t row = song.row.index;
        addTitle(song);
        if (columns_.guests) {
            const auto guests = std::ssize(guestNames(song.guests));
            preview_.mostGuests = std::max(preview_.mostGuests, guests);
            doubtIfCut(song, *columns_.guests);
        }
        if (columns_.duration) {
            addDuration(row, song.duration);
        }
        if (columns_.ltc) {
            addTimecode(row, song.ltc);
        }
    }

    RunSheetPreview finish() && {
        doubtWhatIsHidden();
        doubtMergedGuests();
        doubtUnresolvedTitles();
        for (const auto& [notation, use] : notations_) {
            preview_.notations.push_back(use);
        }
        std::ranges::stable_sort(preview_.doubtfulCells, {}, &RunSheetPreview::DoubtfulCell::row);
        return std::move(preview_);
    }

private:
    void addTitle(const SongCells& song) {
        if (const auto doubt = doubtAboutTitle(song.title)) {
            doubtAbout(*doubt, song.row.index, *columns_.title, song.title);
        }
        doubtIfCut(song, *columns_.title);
    }

    void addDuration(std::int64_t row, std::string_view text) {
        std::optional<std::int64_t> seconds = parseDuration(text);
        if (!seconds) {
            const auto reading = likelyDuration(text);
            if (addUnread(row, *columns_.duration, text, reading)) {
                seconds = reading->seconds;
            }
        }
        if (seconds) {
            ++preview_.durations;
            if (const auto doubt = doubtAboutDuration(text, *seconds)) {
                doubtAbout(*doubt, row, *columns_.duration, text);
            }
        }
    }

    void addTimecode(std::int64_t row, std::string_view text) {
        std::optional<std::string> timecode = parseLtc(text);
        if (!timecode) {
            const auto reading = likelyTimecode(text);
            if (addUnread(row, *columns_.ltc, text, reading)) {
                timecode = reading->text;
            }
        }
        if (timecode) {
            ++preview_.timecodes;
            doubtTimecode(row, *timecode);
        }
    }

    void doubtTimecode(std::int64_t row, std::string_view timecode) {
        if (const auto doubt = doubtAboutTimecode(timecode)) {
            doubtAbout(*doubt, row, *columns_.ltc, timecode);
        } else if (const auto order = orderOf(timecode)) {
            if (!timecodes_.insert(*order).second) {
                doubtAbout(Doubt::sameTimecode, row, *columns_.ltc, timecode);
            } else if (*order < lastTimecode_) {
                doubtAbout(Doubt::earlierTimecode, row, *columns_.ltc, timecode);
            }
            lastTimecode_ = *order;
        }
    }

    /// Whether the reading counts.
    bool addUnread(std::int64_t row, std::int64_t column, std::string_view text,
                   const std::optional<Reading>& reading) {
        const std::string_view trimmed = trimSpacesAndLineBreaks(text);
        if (trimmed.empty()) {
            return false;
        }
        const bool isTaken = reading && import_.takes(*reading, row, column);
        ++(isTaken ? preview_.taken : preview_.unread);
        if (reading) {
            auto& use = notations_[reading->notation];
            if (use.cells++ == 0) {
                use.notation = reading->notation;
                use.column = column;
                use.text = shortened(trimmed);
                use.reading = reading->text;
            }
        }
        if (preview_.unreadCells.size() < RunSheetPreview::maximumListed) {
            preview_.unreadCells.push_back({row, column, shortened(trimmed), reading, isTaken});
        }
        return isTaken;
    }

    void doubtAbout(Doubt doubt, std::int64_t row, std::int64_t column, std::string_view text) {
        ++preview_.doubts;
        if (preview_.doubtfulCells.size() < RunSheetPreview::maximumListed) {
            preview_.doubtfulCells.push_back({row, column, doubt, shortened(text)});
        }
    }

    void doubtIfCut(const SongCells& song, std::int64_t column) {
        const XLSXWorkbook::Cell* cell = sheet_.cell(song.row, column);
        if (cell && sheet_.texts->isCut(cell->text)) {
            doubtAbout(Doubt::cutText, song.row.index, column, sheet_.texts->at(cell->text));
        }
    }

    void doubtWhatIsHidden() {
        for (const std::int64_t row : sheet_.looks.hiddenRows) {
            const std::string_view title =
                trimSpacesAndLineBreaks(sheet_.text(row, *columns_.title).value_or(""));
            if (row >= import_.startRow && !title.empty()) {
                doubtAbout(Doubt::hiddenRow, row, *columns_.title, title);
            }
        }
        for (const auto& column :
             {columns_.title, columns_.guests, columns_.duration, columns_.ltc}) {
            const bool isHidden =
                column && std::ranges::any_of(sheet_.looks.hiddenColumns, [&](const auto& range) {
                    return range.first <= *column && *column <= range.second;
                });
            if (isHidden) {
                doubtAbout(Doubt::hiddenColumn, import_.headerRow, *column,
                           import_.columnLabel(*column));
            }
        }
    }

    void doubtMergedGuests() {
        for (const XLSXWorkbook::MergedCells& cells : sheet_.looks.mergedCells) {
            if (cells.column == columns_.guests && cells.lastRow > import_.startRow) {
                doubtAbout(Doubt::mergedGuests, cells.firstRow, cells.column,
                           sheet_.text(cells.firstRow, cells.column).value_or(""));
            }
        }
    }

    void doubtUnresolvedTitles() {
        for (const auto& [row, column] : sheet_.looks.unresolvedFormulas) {
            if (column == columns_.title && row >= import_.startRow) {
                doubtAbout(Doubt::unresolvedTitle, row, column, "");
            }
        }
    }

    const RunSheetImport& import_;
    const XLSXWorkbook::Sheet& sheet_;
    RunSheetColumns columns_;
    RunSheetPreview preview_;
    std::map<Notation, RunSheetPreview::NotationUse> notations_;
    std::unordered_set<std::int64_t> timecodes_;
    std::int64_t lastTimecode_ = INT64_MIN;
};

}  // namespace

std::string shortened(std::string_view text) {
    std::string line;
    std::size_t characters = 0;
    for (const char c : text) {
        const bool continues = (static_cast<unsigned char>(c) & 0xC0) == 0x80;
        if (!continues && ++characters > RunSheetPreview::maximumTextShown) {
            return line + "…";
        }
        line += c == '\n' ? ' ' : c;
    }
    return line;
}

RunSheetPreview previewOf(const RunSheetImport& import, WorkProgress& progress) {
    const XLSXWorkbook::Sheet* sheet = import.sheet();
    const RunSheetColumns columns = import.columns();
    if (!sheet || !columns.title) {
        return {};
    }
    Previewer previewer(import, *sheet);
    forEachSong(*sheet, columns, import.startRow, [&](const SongCells& song) {
        previewer.add(song);
        progress.done =
            static_cast<double>(song.row.endCell) / static_cast<double>(sheet->cells.size());
        return !progress.isCancelled;
    });
    return std::move(previewer).finish();
}

}  // namespace tessivo
