#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

class QKeyEvent;

namespace tessivo {

/// While it is shown, takes Space and the Left arrow from every window of the program's screens,
/// whatever has been clicked, except where somebody is typing text. Keys are told by their place on
/// the keyboard, so that layouts and modifiers which turn Space into another character don't
/// matter. A held key counts once.
class KeyCaptureView : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

public:
    explicit KeyCaptureView(QQuickItem* parent = nullptr);

Q_SIGNALS:
    void space();
    void leftArrow();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool handleKey(const QKeyEvent& event);
};

}  // namespace tessivo
