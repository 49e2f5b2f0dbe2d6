#pragma once

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QKeyEvent;
class QQmlEngine;

namespace tessivo {

class AppState;

/// Ctrl+L, in whichever window of the program. It locks when it is pressed and opens when it is
/// held, and the press that did the one never does the other: a shortcut couldn't tell, for it
/// hears of presses only, and takes some of a held key's repeats for new ones.
class LockKey final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Whether the key is held since it was pressed while the live screen was locked.
    Q_PROPERTY(bool holding READ holding NOTIFY holdingChanged)

public:
    static LockKey* create(QQmlEngine* engine, QJSEngine*);

    explicit LockKey(const AppState& state);

    bool holding() const { return holding_; }

Q_SIGNALS:
    /// The key was pressed while nothing was locked.
    void pressed();
    void holdingChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void press(const QKeyEvent& event);
    void release();
    void setHolding(bool holding);

    const AppState& state_;
    /// Runs from a release on: one that a press follows at once is a repeat of a held key, as X11
    /// spells it when Qt doesn't see through it.
    QTimer release_;
    bool down_ = false;
    bool holding_ = false;
};

}  // namespace tessivo
