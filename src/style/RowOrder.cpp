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
        if (row->metaObject()->indexOfProperty("index") >= 0) {
            connect(row, SIGNAL(indexChanged()), this, SLOT(sort()), Qt::UniqueConnection);
        }
    }
    sort();
}

// At once, not on a later turn: the next event may be the Tab key, and a list makes rows at any
// moment. By index, not by place: it gives a row that it has made ahead no place yet.
void RowOrder::sort() {
    QList<QQuickItem*> rows = rows_->childItems();
    const auto position = [](const QQuickItem* row) {
        const QVariant index = row->property("index");
        return index.isValid() ? index.toInt() : -1;  // a header
    };
    if (std::ranges::is_sorted(rows, {}, position)) {
        return;
    }
    std::ranges::stable_sort(rows, {}, position);
    for (qsizetype i = 1; i < rows.size(); ++i) {
        rows[i]->stackAfter(rows[i - 1]);
    }
}

}  // namespace tessivo
