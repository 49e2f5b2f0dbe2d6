#include "ui/KeyCaptureView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>

namespace tessivo {
namespace {

enum class CapturedKey { none, space, leftArrow };

/// X11 and Wayland key codes: the kernel's evdev codes plus 8 (xkeyboard-config, keycodes/evdev).
constexpr quint32 evdevSpace = 65;
constexpr quint32 evdevLeft = 113;

CapturedKey capturedKey(const QKeyEvent& event) {
    static const bool hasEvdevCodes = QGuiApplication::platformName() == QLatin1String("xcb") ||
                                      QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
    if (hasEvdevCodes && event.nativeScanCode() == evdevSpace) {
        return CapturedKey::space;
    }
    if (hasEvdevCodes && event.nativeScanCode() == evdevLeft) {
        return CapturedKey::leftArrow;
    }
    switch (event.key()) {
        case Qt::Key_Space:
            return CapturedKey::space;
        case Qt::Key_Left:
            return CapturedKey::leftArrow;
        default:
            return CapturedKey::none;
    }
}

bool isTyping(const QQuickWindow& window) {
    const QQuickItem* item = window.activeFocusItem();
    return item && item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

}  // namespace

KeyCaptureView::KeyCaptureView(QQuickItem* parent) : QQuickItem(parent) {
    qGuiApp->installEventFilter(this);
}

bool KeyCaptureView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !isVisible() || !isEnabled() || !window()) {
        return false;
    }
    const auto* target = qobject_cast<QQuickWindow*>(watched);
    return target && !isTyping(*target) && handleKey(static_cast<const QKeyEvent&>(*event));
}

bool KeyCaptureView::handleKey(const QKeyEvent& event) {
    const CapturedKey key = capturedKey(event);
    if (key == CapturedKey::none) {
        return false;
    }
    if (!event.isAutoRepeat()) {
        if (key == CapturedKey::space) {
            Q_EMIT space();
        } else {
            Q_EMIT leftArrow();
        }
    }
    return true;
}

}  // namespace tessivo
