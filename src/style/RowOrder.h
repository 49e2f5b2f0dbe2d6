#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace tessivo {

/// Keeps the rows of a list in the order in which they are seen. The Tab key and assistive tools go
/// by the order among siblings, and a list leaves its rows as it made them, whatever moves. A row
/// has an `index`.
class RowOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The item whose children the rows are.
    Q_PROPERTY(QQuickItem* rows READ rows WRITE setRows NOTIFY rowsChanged REQUIRED)

public:
    QQuickItem* rows() const { return rows_; }
    void setRows(QQuickItem* rows);

Q_SIGNALS:
    void rowsChanged();

private:
    void watchRows();
    Q_SLOT void sort();

    QPointer<QQuickItem> rows_;
};

}  // namespace tessivo
