#pragma once

#include "import/ColumnRole.h"
#include "import/XLSXReader.h"
#include "import/XLSXWorkbook.h"
#include "model/Show.h"
#include "model/Song.h"
#include "platform/FileStore.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// Turns a run sheet into a show: the loaded workbook, the operator's choices about it, and what
/// follows from them. No role is guessed from the headings. A failure sets `errorMessage()`, in
/// French, and leaves the choices for another try. Lives as long as the import screen is open.
class RunSheetImport {
public:
    /// A cell whose text is no length or no timecode, so that its song gets none.
    struct UnreadCell {
        std::int64_t row = 0;
        std::int64_t column = 0;
        std::string text;
    };

    /// What `createShow()` would make of the cells.
    struct Preview {
        static constexpr std::size_t maximumListed = 200;

        std::int64_t songs = 0;
        std::int64_t durations = 0;
        std::int64_t timecodes = 0;
        std::int64_t unread = 0;
        std::vector<UnreadCell> firstUnread;  ///< `maximumListed` of them at most, in row order
    };

    /// Takes the names from the chosen file, then what reading it gave. A workbook without sheets
    /// or a file that couldn't be read leaves the workbook loaded before in place.
    void load(const FileLocation& location, XLSXReader::Result result);

    const std::optional<XLSXWorkbook>& workbook() const { return workbook_; }
    /// The chosen file's name without folder and extension.
    const std::string& fileName() const { return fileName_; }
    const std::optional<std::string>& errorMessage() const { return errorMessage_; }

    std::int64_t selectedSheetIndex() const { return selectedSheetIndex_; }
    /// Suggests the rows of the sheet and takes every role back.
    void selectSheet(std::int64_t index);

    /// Rows by the spreadsheet's own numbers: the one of the headings, and the first song's.
    std::int64_t headerRow = 1;
    std::int64_t startRow = 2;
    std::string showName;

    ColumnRole role(std::int64_t column) const;
    /// Several columns may have one role; the leftmost counts.
    void setRole(std::int64_t column, ColumnRole role) { columnRoles_[column] = role; }

    /// Whether the column is the one that gives its role; true also for a column without one.
    bool counts(std::int64_t column) const;

    /// The chosen sheet, or null; valid until another workbook is loaded.
    const XLSXWorkbook::Sheet* sheet() const;
    /// The columns to be given a role are those from 1 to this one, the last with a cell; 0 without
    /// any. A file may name any column, so there can be far more than a screen can list.
    std::int64_t usedColumns() const;
    /// The column's heading; "(vide)" without one.
    std::string columnLabel(std::int64_t column) const;
    /// One pass over the rows, which can be a million: not for every keystroke.
    Preview preview() const;
    /// How many songs `createShow()` would make.
    std::int64_t songCount() const { return preview().songs; }
    /// The show that the choices lead to, for the application state to import; none on failure.
    std::optional<Show> createShow();

private:
    void resetRowGuesses();
    std::optional<std::int64_t> columnWithRole(ColumnRole role) const;
    /// Calls `visit(song)` with the row and the cells of each song, top down.
    template <typename Visit>
    void forEachSong(Visit&& visit) const;
    std::vector<Song> makeSongs() const;

    std::optional<XLSXWorkbook> workbook_;
    std::string fileName_;
    std::int64_t selectedSheetIndex_ = 0;
    std::map<std::int64_t, ColumnRole> columnRoles_;  ///< a column without an entry is ignored
    std::optional<std::string> errorMessage_;
};

}  // namespace tessivo
