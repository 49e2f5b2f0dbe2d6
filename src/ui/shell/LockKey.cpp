#include "ui/shell/LockKey.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "state/AppState.h"

namespace tessivo {
namespace {

/// Longer than a repeat takes on a busy computer, shorter than any hand.
constexpr int repeatMilliseconds = 50;

}  // namespace

LockKey* LockKey::create(QQmlEngine* engine, QJSEngine*) {
    return new LockKey(screenContextOf(*engine).state);
}

LockKey::LockKey(const AppState& state) : state_(state) {
    release_.setSingleShot(true);
    release_.setInterval(repeatMilliseconds);
    connect(&release_, &QTimer::timeout, this, &LockKey::release);
    qGuiApp->installEventFilter(this);
}

bool LockKey::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWindowType()) {  // also while it is going, when it is no longer a QQuickWindow
        return false;
    }
    if (event->type() == QEvent::KeyPress) {
        press(static_cast<const QKeyEvent&>(*event));
    } else if (event->type() == QEvent::KeyRelease && down_) {
        const int key = static_cast<const QKeyEvent&>(*event).key();
        if (key == Qt::Key_L || key == Qt::Key_Control) {
            release_.start();
        }
    } else if (event->type() == QEvent::FocusOut) {
        release();  // whoever has the keyboard now sees the release
    }
    return false;
}

void LockKey::press(const QKeyEvent& event) {
    if (event.key() != Qt::Key_L || event.modifiers() != Qt::ControlModifier) {
        return;
    }
    release_.stop();
    if (down_ || event.isAutoRepeat()) {
        return;
    }
    down_ = true;
    if (state_.isLocked()) {
        setHolding(true);
    } else {
        Q_EMIT pressed();
    }
}

void LockKey::release() {
    release_.stop();
    down_ = false;
    setHolding(false);
}

void LockKey::setHolding(bool holding) {
    if (holding != holding_) {
        holding_ = holding;
        Q_EMIT holdingChanged();
    }
}

}  // namespace tessivo
