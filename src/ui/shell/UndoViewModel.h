#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "state/AppState.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// What can be taken back and made again, as the menu and the offer after a removal read it. Names
/// are empty when there is nothing.
///
/// It also keeps Ctrl+Z from the fields that have nothing of their own to take back (`ownUndo`):
/// Qt's would take the key before any menu sees it.
class UndoViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString undoable READ undoable NOTIFY changed)
    Q_PROPERTY(QString redoable READ redoable NOTIFY changed)
    /// What was just removed and may be taken back: a sentence.
    Q_PROPERTY(QString removal READ removal NOTIFY removalChanged)

public:
    static UndoViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit UndoViewModel(AppState& state);

    QString undoable() const;
    QString redoable() const;
    const QString& removal() const { return removal_; }

    Q_INVOKABLE void undo() { state_.undo(); }
    Q_INVOKABLE void redo() { state_.redo(); }

Q_SIGNALS:
    void changed();
    void removalChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void updateRemoval();

    AppState& state_;
    Subscription subscription_;
    QString removal_;
};

}  // namespace tessivo
