#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

#include <array>

class QKeyEvent;

namespace tessivo {

/// While it is shown, takes Space and the Left arrow from every window of the program's screens,
/// whatever has been clicked, except where somebody is typing text or while something that takes
/// the keyboard lies over it. Keys are told by their place on the keyboard, so that layouts and
/// modifiers which turn Space into another character don't matter. A held key counts once.
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
    enum Key { noKey, spaceKey, leftArrowKey };

    /// Whether a dialog, a menu or an open chooser has the keyboard in the view's window. It keeps
    /// it there while another window is in front.
    bool isCovered() const;
    static Key keyOf(const QKeyEvent& event);
    bool isRepeat(Key key, const QKeyEvent& press) const;
    void act(Key key);

    /// When each key was last released, in the window system's milliseconds.
    std::array<quint64, leftArrowKey + 1> releasedAt_{};
};

}  // namespace tessivo
