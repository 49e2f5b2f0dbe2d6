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
        connect(row, &QQuickItem::yChanged, this, &RowOrder::sort, Qt::UniqueConnection);
    }
    sort();
}

// At once, not on a later turn: the next event may be the Tab key, and a list makes rows at any
// moment.
void RowOrder::sort() {
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
