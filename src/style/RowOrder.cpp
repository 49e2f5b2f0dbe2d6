#include "style/RowOrder.h"

#include <algorithm>

namespace tessivo {

void RowOrder::setRows(QQuickItem* rows) {
    if (rows == rows_) {
        return;
    }
    if (rows_) {
        rows_->disconnect(this);
    }
    rows_ = rows;
    if (rows_) {
        connect(rows_, &QQuickItem::childrenChanged, this, &RowOrder::watchRows);
        watchRows();
    }
    Q_EMIT rowsChanged();
}

void RowOrder::watchRows() {
    for (const QQuickItem* row : rows_->childItems()) {
        connect(row, &QQuickItem::yChanged, this, &RowOrder::sortLater, Qt::UniqueConnection);
    }
    sortLater();
}

void RowOrder::sortLater() {
    if (!isSorting_) {
        isSorting_ = true;
        // A row that moves takes others with it: they are put in order once all are in place.
        QMetaObject::invokeMethod(this, &RowOrder::sort, Qt::QueuedConnection);
    }
}

void RowOrder::sort() {
    isSorting_ = false;
    if (!rows_) {
        return;
    }
    QList<QQuickItem*> rows = rows_->childItems();
    const auto isHigher = [](const QQuickItem* a, const QQuickItem* b) { return a->y() < b->y(); };
    if (std::is_sorted(rows.begin(), rows.end(), isHigher)) {
        return;
    }
    std::stable_sort(rows.begin(), rows.end(), isHigher);
    for (qsizetype i = 1; i < rows.size(); ++i) {
        rows[i]->stackAfter(rows[i - 1]);
    }
}

}  // namespace tessivo
