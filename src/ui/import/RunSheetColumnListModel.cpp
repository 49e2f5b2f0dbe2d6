#include "ui/import/RunSheetColumnListModel.h"

#include "import/ColumnLetters.h"
#include "kit/ShownText.h"

#include <algorithm>

namespace tessivo {

int RunSheetColumnListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant RunSheetColumnListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count_) {
        return {};
    }
    const std::int64_t column = index.row() + 1;
    switch (role) {
        case LettersRole:
            return toQString(columnLetter(column));
        case HeadingRole:
            return toShownText(import_.columnLabel(column));
        case MeaningRole:
            return static_cast<int>(import_.role(column));
        case CountsRole:
            return import_.counts(column);
        default:
            return {};
    }
}

QHash<int, QByteArray> RunSheetColumnListModel::roleNames() const {
    return {{LettersRole, "letters"},
            {HeadingRole, "heading"},
            {MeaningRole, "meaning"},
            {CountsRole, "counts"}};
}

void RunSheetColumnListModel::showSheet() {
    const int count = static_cast<int>(std::min(import_.usedColumns(), maximumListed));
    if (count > count_) {
        beginInsertRows({}, count_, count - 1);
        count_ = count;
        endInsertRows();
    } else if (count < count_) {
        beginRemoveRows({}, count, count_ - 1);
        count_ = count;
        endRemoveRows();
    }
    update();
}

void RunSheetColumnListModel::update() {
    if (count_ > 0) {
        Q_EMIT dataChanged(index(0), index(count_ - 1));
    }
}

}  // namespace tessivo
