#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "live/HandOvers.h"
#include "state/AppState.h"

namespace tessivo {

struct ScreenContext;

/// The id that a screen hands back; nobody's for a text that is none.
Uuid toUuid(const QString& text);

/// What a screen's view model of one show stands on: the show with `showId`, followed through the
/// state's changes. Derived classes spell `tessivo::ShowObserver`, the name under which Qt's tools
/// know it.
class ShowObserver : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ANONYMOUS
    Q_PROPERTY(QString showId READ showId WRITE setShowId NOTIFY showIdChanged)

public:
    explicit ShowObserver(QObject* parent) : QObject(parent) {}
    void classBegin() override {}
    void componentComplete() override;

    const QString& showId() const { return showId_; }
    void setShowId(const QString& showId);

Q_SIGNALS:
    void showIdChanged();

protected:
    /// The one state; from componentComplete on.
    AppState& state() const;
    /// Where the show's equipment goes; good until the shows change.
    const HandOvers& handOvers() const;
    /// The show with `showId`, or a placeholder with the usual labels and no songs when it is gone.
    const Show& show() const;
    bool isGone() const;

    /// A field of the state has changed.
    virtual void update(AppState::Field field) = 0;
    /// Shows the state as it is now.
    virtual void present() = 0;
    /// To be called when there is something else to present; does nothing before the state is
    /// known.
    void presentAnew();

private:
    ScreenContext* context_ = nullptr;
    Subscription subscription_;
    QString showId_;
};

}  // namespace tessivo
