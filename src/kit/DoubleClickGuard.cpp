#include "kit/DoubleClickGuard.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QQuickWindow>
#include <QStyleHints>

namespace tessivo {

DoubleClickGuard::DoubleClickGuard(QObject* parent) : QObject(parent) {
    qGuiApp->installEventFilter(this);
}

bool DoubleClickGuard::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool isOfButton = type == QEvent::MouseButtonPress ||
                            type == QEvent::MouseButtonDblClick ||
                            type == QEvent::MouseButtonRelease;
    if (!isOfButton || !qobject_cast<QQuickWindow*>(watched)) {
        return false;
    }
    auto& mouse = static_cast<QMouseEvent&>(*event);
    if (type == QEvent::MouseButtonPress) {
        swallows_ = meetsSomethingElse(mouse);
    } else if (type == QEvent::MouseButtonRelease) {
        place_ = mouse.globalPosition();
        releasedAt_ = mouse.timestamp();
        if (!swallows_) {
            auto* item = qobject_cast<QQuickItem*>(mouse.exclusiveGrabber(mouse.point(0)));
            pressed_ = item ? std::optional(QPointer(item)) : std::nullopt;
        }
    }
    return swallows_;
}

bool DoubleClickGuard::meetsSomethingElse(const QMouseEvent& press) const {
    const QStyleHints& hints = *QGuiApplication::styleHints();
    const QPointF place = press.globalPosition();
    const bool isSecond =
        press.timestamp() - releasedAt_ < static_cast<quint64>(hints.mouseDoubleClickInterval()) &&
        (place - place_).manhattanLength() < hints.startDragDistance();
    if (!isSecond || !pressed_) {
        return false;
    }
    const QQuickItem* item = *pressed_;
    return !item || !item->isVisible() || !item->contains(item->mapFromGlobal(place));
}

}  // namespace tessivo
