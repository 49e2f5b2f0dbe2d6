#pragma once

#include "import/ColumnRole.h"
#include "import/Notations.h"
#include "import/RunSheetFile.h"
#include "import/RunSheetRows.h"
#include "import/XLSXWorkbook.h"
#include "model/Show.h"
#include "model/Song.h"
#include "platform/FileStore.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessivo {

/// Turns a run sheet into a show: the loaded workbook, the operator's choices about it, and what
/// follows from them. No role is guessed from the headings. A failure sets `errorMessage()`, in
/// French, and leaves the choices for another try. A value: copies share the workbook, which never
/// changes, so that another thread can work on one while the operator goes on choosing.
class RunSheetImport {
public:
    /// A show beyond so many bytes couldn't be sent to a station.
    static constexpr std::size_t maximumShowSize = std::size_t{16} * 1024 * 1024;

    /// Takes the names from the chosen file, before it is read.
    void choose(const FileLocation& location);
    /// Takes what reading it gave. A workbook without sheets or a file that couldn't be read leaves
    /// the workbook loaded before in place.
    void load(RunSheetFile file);

    /// Null until one is loaded.
    const XLSXWorkbook* workbook() const { return workbook_.get(); }
    /// The chosen file's name without folder and extension.
    const std::string& fileName() const { return fileName_; }
    const std::optional<std::string>& errorMessage() const { return errorMessage_; }
    /// What can be done about it; may be empty.
    const std::string& advice() const { return advice_; }
    /// The error is that of a file before the one that is loaded.
    bool isErrorPast() const { return isErrorPast_; }

    std::int64_t selectedSheetIndex() const { return selectedSheetIndex_; }
    /// Suggests the rows of the sheet and takes every role and notation back.
    void selectSheet(std::int64_t index);
    /// Where the chosen sheet has no cells: the next one that has some, from the first on again.
    std::optional<std::int64_t> sheetWithCells() const;

    /// Rows by the spreadsheet's own numbers: the one of the headings, and the first song's.
    std::int64_t headerRow = 1;
    std::int64_t startRow = 2;
    std::string showName;

    ColumnRole role(std::int64_t column) const;
    /// Several columns may have one role; the leftmost counts.
    void setRole(std::int64_t column, ColumnRole role) { columnRoles_[column] = role; }
    RunSheetColumns columns() const;

    /// Whether the column is the one that gives its role; true also for a column without one.
    bool counts(std::int64_t column) const;

    /// Cells in that notation are read too, but for those that are refused.
    void accept(Notation notation, bool accepted);
    bool accepts(Notation notation) const { return accepted_.contains(notation); }
    void refuse(std::int64_t row, std::int64_t column, bool refused);
    /// Whether the reading of that cell counts.
    bool takes(const Reading& reading, std::int64_t row, std::int64_t column) const;

    /// The chosen sheet, or null; valid until another workbook is loaded.
    const XLSXWorkbook::Sheet* sheet() const;
    /// The columns to be given a role are those from 1 to this one, the last with a cell; 0 without
    /// any. A file may name any column, so there can be far more than a screen can list.
    std::int64_t usedColumns() const;
    /// The column's heading; "(vide)" without one. Valid as long as the sheet.
    std::string_view columnLabel(std::int64_t column) const;
    /// The show that the choices lead to, for the application state to import; none on failure.
    std::optional<Show> createShow();

private:
    void fail(std::string message);
    void resetRowGuesses();
    std::optional<std::int64_t> columnWithRole(ColumnRole role) const;
    Song songOf(const SongCells& cells, const RunSheetColumns& columns) const;
    std::optional<std::vector<Song>> makeSongs(const XLSXWorkbook::Sheet& sheet) const;

    std::shared_ptr<const XLSXWorkbook> workbook_;
    std::string fileName_;
    std::int64_t selectedSheetIndex_ = 0;
    std::map<std::int64_t, ColumnRole> columnRoles_;  ///< a column without an entry is ignored
    std::set<Notation> accepted_;
    std::set<std::pair<std::int64_t, std::int64_t>> refusedCells_;  ///< by row and column
    std::optional<std::string> errorMessage_;
    std::string advice_;
    bool isErrorPast_ = false;
};

}  // namespace tessivo
