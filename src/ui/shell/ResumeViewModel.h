#pragma once

#include <QObject>
#include <QQuickWindow>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "state/Resumption.h"

#include <optional>

class QJSEngine;
class QQmlEngine;

namespace tessivo {

struct ScreenContext;

/// What a crash broke off, as the choice screen offers it, and the windows that come back with it.
class ResumeViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Empty when nothing is offered.
    Q_PROPERTY(QString title READ title NOTIFY offerChanged)
    Q_PROPERTY(QString detail READ detail NOTIFY offerChanged)
    /// Whether the admin mode is offered, or else the display station.
    Q_PROPERTY(bool leads READ leads NOTIFY offerChanged)

public:
    static ResumeViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit ResumeViewModel(ScreenContext& context);

    QString title() const;
    QString detail() const;
    bool leads() const { return offer_ && offer_->leads; }

    /// A mode was chosen by hand.
    Q_INVOKABLE void begin(bool leads);
    Q_INVOKABLE void leave();
    Q_INVOKABLE void dismiss();
    /// To be followed by the mode that was offered. The admin goes on once it leads: should another
    /// one lead by now, nothing has happened.
    Q_INVOKABLE void resume();

    /// From now on the window comes back with the rest, under this name.
    Q_INVOKABLE void keepPlace(QQuickWindow* window, const QString& name);
    /// Shows the window on that screen. When it isn't plugged in any more, the window shows where
    /// it would else, and not in full screen: it might cover the operator's.
    Q_INVOKABLE void putInPlace(QQuickWindow* window, const QString& screen, bool fullScreen);

Q_SIGNALS:
    void offerChanged();
    /// This window was shown, and is to be put in its place.
    void windowWanted(const QString& name, const QString& screen, bool fullScreen);

private:
    void update();
    void goOn(bool leads);

    ScreenContext& context_;
    std::optional<Resumption::Offer> offer_;
    Subscription subscription_;
};

}  // namespace tessivo
