#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <optional>

class QMouseEvent;

namespace tessivo {

/// Keeps the second half of a double click from what has come under the pointer because of the
/// first: the show behind a question that was answered, the field behind a list that has closed.
/// Acts in all windows of the program's screens.
class DoubleClickGuard : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit DoubleClickGuard(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool meetsSomethingElse(const QMouseEvent& press) const;

    /// What the last click pressed; a click on nothing has none, one on what has gone a null one.
    std::optional<QPointer<QQuickItem>> pressed_;
    QPointF place_;           // of that click, on the screen
    quint64 releasedAt_ = 0;  // in the window system's milliseconds
    bool swallows_ = false;
};

}  // namespace tessivo
