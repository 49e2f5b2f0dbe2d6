#include "ui/live/KeyCaptureView.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>

namespace tessivo {
namespace {

/// X11 and Wayland key codes: the kernel's evdev codes plus 8 (xkeyboard-config, keycodes/evdev).
constexpr quint32 evdevSpace = 65;
constexpr quint32 evdevLeft = 113;

bool hasEvdevCodes() {
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"));
}

bool isTyping(const QQuickWindow& window) {
    const QQuickItem* item = window.activeFocusItem();
    return item && item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

}  // namespace

KeyCaptureView::KeyCaptureView(QQuickItem* parent) : QQuickItem(parent) {
    qGuiApp->installEventFilter(this);
}

bool KeyCaptureView::isCovered() const {
    const QQuickItem* withKeyboard = window()->contentItem()->scopedFocusItem();
    return withKeyboard && !withKeyboard->isAncestorOf(this);
}

bool KeyCaptureView::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if ((!press && event->type() != QEvent::KeyRelease) || !qobject_cast<QQuickWindow*>(watched)) {
        return false;
    }
    const auto& keyEvent = static_cast<const QKeyEvent&>(*event);
    const Key key = keyOf(keyEvent);
    if (key == noKey || !isVisible() || !isEnabled() || !window() || isCovered() ||
        isTyping(static_cast<const QQuickWindow&>(*watched))) {
        return false;
    }
    if (!press) {
        releasedAt_[key] = keyEvent.timestamp();
    } else if (!isRepeat(key, keyEvent)) {
        act(key);
    }
    return true;
}

KeyCaptureView::Key KeyCaptureView::keyOf(const QKeyEvent& event) {
    static const bool byPlace = hasEvdevCodes();
    if (const quint32 place = event.nativeScanCode(); byPlace && place != 0) {
        // The keypad's arrows are other keys, whatever they say.
        return place == evdevSpace ? spaceKey : place == evdevLeft ? leftArrowKey : noKey;
    }
    switch (event.key()) {
        case Qt::Key_Space:
            return spaceKey;
        case Qt::Key_Left:
            return leftArrowKey;
        default:
            return noKey;
    }
}

bool KeyCaptureView::isRepeat(Key key, const QKeyEvent& press) const {
    // X11 spells a repeat as a release and a press of the same moment. Qt tells them by looking
    // ahead in its queue, and misses those whose press hasn't arrived yet: under load a resting
    // hand would then skip songs.
    return press.isAutoRepeat() ||
           (press.timestamp() != 0 && press.timestamp() == releasedAt_[key]);
}

void KeyCaptureView::act(Key key) {
    if (key == spaceKey) {
        Q_EMIT space();
    } else {
        Q_EMIT leftArrow();
    }
}

}  // namespace tessivo
