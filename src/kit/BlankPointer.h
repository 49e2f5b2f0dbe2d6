#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace tessivo {

/// Hides the pointer over a window while `active`, at once: a cursor shape of an item is only taken
/// up once the pointer moves.
class BlankPointer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickWindow* target READ target WRITE setTarget NOTIFY changed REQUIRED)
    Q_PROPERTY(bool active READ active WRITE setActive NOTIFY changed REQUIRED)

public:
    QQuickWindow* target() const { return target_; }
    void setTarget(QQuickWindow* target);
    bool active() const { return active_; }
    void setActive(bool active);

Q_SIGNALS:
    void changed();

private:
    void apply();

    QPointer<QQuickWindow> target_;
    bool active_ = false;
};

}  // namespace tessivo
