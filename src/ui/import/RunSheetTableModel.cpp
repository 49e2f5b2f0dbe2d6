#include "ui/import/RunSheetTableModel.h"

#include "base/Text.h"
#include "import/ColumnLetters.h"
#include "import/RunSheetText.h"
#include "kit/ShownText.h"
#include "ui/import/RunSheetColumnListModel.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessivo {

int RunSheetTableModel::rowCount(const QModelIndex& parent) const {
    const XLSXWorkbook::Sheet* sheet = import_.sheet();
    return parent.isValid() || !sheet
               ? 0
               : static_cast<int>(std::clamp<std::int64_t>(sheet->maxRow, 0, maximumRows));
}

int RunSheetTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0
                            : static_cast<int>(std::min(import_.usedColumns(),
                                                        RunSheetColumnListModel::maximumListed));
}

QVariant RunSheetTableModel::data(const QModelIndex& index, int role) const {
    const XLSXWorkbook::Sheet* sheet = import_.sheet();
    if (!sheet || !index.isValid()) {
        return {};
    }
    const std::int64_t row = index.row() + 1, column = index.column() + 1;
    switch (role) {
        case TextRole:
            return toShownText(sheet->text(row, column).value_or("")).simplified();
        case LettersRole:
            return toQString(columnLetter(column));
        case MeaningRole:
            return import_.role(column) == ColumnRole::ignore
                       ? QString()
                       : toQString(textOf(import_.role(column)));
        case UnreadRole:
            return isUnread(row, column);
        default:
            return {};
    }
}

QHash<int, QByteArray> RunSheetTableModel::roleNames() const {
    return {{TextRole, "cellText"},
            {LettersRole, "letters"},
            {MeaningRole, "meaning"},
            {UnreadRole, "isUnread"}};
}

int RunSheetTableModel::widthOf(int column) const {
    constexpr std::size_t rowsLookedAt = 100;
    constexpr int narrowest = 116, widest = 320, perCharacter = 7, margins = 20;
    const XLSXWorkbook::Sheet* sheet = import_.sheet();
    qsizetype longest = 0;
    for (std::size_t i = 0; sheet && i < std::min(sheet->rows.size(), rowsLookedAt); ++i) {
        // A row of one cell is a title or a note, which a column of numbers needn't make room for.
        const XLSXWorkbook::Row& row = sheet->rows[i];
        if (row.endCell - row.firstCell > 1 || sheet->maxCol == 1) {
            longest =
                std::max(longest, toShownText(sheet->text(row, column + 1).value_or("")).size());
        }
    }
    return static_cast<int>(
        std::clamp<qsizetype>(longest * perCharacter + margins, narrowest, widest));
}

void RunSheetTableModel::showSheet() {
    beginResetModel();
    endResetModel();
}

void RunSheetTableModel::update() {
    if (rowCount() > 0 && columnCount() > 0) {
        Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

bool RunSheetTableModel::isUnread(std::int64_t row, std::int64_t column) const {
    const XLSXWorkbook::Sheet& sheet = *import_.sheet();
    const ColumnRole role = import_.role(column);
    const bool isTimed = role == ColumnRole::duration || role == ColumnRole::ltc;
    if (!isTimed || !import_.counts(column) || row < import_.startRow) {
        return false;
    }
    const std::optional<std::int64_t> title = import_.columns().title;
    const bool isSong =
        title && !trimSpacesAndLineBreaks(sheet.text(row, *title).value_or("")).empty();
    const std::string_view text = trimSpacesAndLineBreaks(sheet.text(row, column).value_or(""));
    const bool isLength = role == ColumnRole::duration;
    if (!isSong || text.empty() ||
        (isLength ? parseDuration(text).has_value() : parseLtc(text).has_value())) {
        return false;
    }
    const auto reading = isLength ? likelyDuration(text) : likelyTimecode(text);
    return !reading || !import_.takes(*reading, row, column);
}

}  // namespace tessivo
