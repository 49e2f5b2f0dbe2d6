#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "state/AppState.h"
#include "timecode/LtcManager.h"

#include <set>

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// Whether the timecode can be trusted, and what could be done about it: at most one thing at a
/// time, and each once a capture.
class LineHealthViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Empty when there is nothing to say.
    Q_PROPERTY(QString line READ line NOTIFY lineChanged)
    /// Whether somebody should look at the line.
    Q_PROPERTY(bool alarming READ alarming NOTIFY lineChanged)
    /// What could be done, a sentence; empty when nothing needs to be.
    Q_PROPERTY(QString offer READ offer NOTIFY offerChanged)
    /// What the button says that does it.
    Q_PROPERTY(QString remedy READ remedy NOTIFY offerChanged)
    /// Whether timecode is counted in 30 frames a second instead of 25.
    Q_PROPERTY(bool countsThirty READ countsThirty WRITE setCountsThirty NOTIFY countsThirtyChanged)
    /// Whether the song that the timecode is in is followed, rather than the songs' starts.
    Q_PROPERTY(bool followsPosition READ followsPosition WRITE setFollowsPosition NOTIFY
                   followsPositionChanged)

public:
    static LineHealthViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit LineHealthViewModel(AppState& state);

    const QString& line() const { return line_; }
    bool alarming() const { return alarming_; }
    QString offer() const;
    QString remedy() const;
    bool countsThirty() const { return manager_.countsThirty(); }
    void setCountsThirty(bool counts) { manager_.setCountsThirty(counts); }
    bool followsPosition() const { return state_.following() == AppState::Following::byPosition; }
    void setFollowsPosition(bool follows);

    /// Does what is offered.
    Q_INVOKABLE void accept();
    /// Offers it no more in this capture.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void lineChanged();
    void offerChanged();
    void countsThirtyChanged();
    void followsPositionChanged();

private:
    enum class Offer { none, channel, careful, counting };

    void follow(LtcManager::Field field);
    void follow(AppState::Field field);
    void show();
    /// What would help, whether it was offered already or not.
    Offer wanted(const TimecodeHealth::Reading& reading) const;
    void setOffer(Offer offer);

    AppState& state_;
    LtcManager& manager_;
    QString line_;
    bool alarming_ = false;
    Offer offer_ = Offer::none;
    QString rate_;              ///< the one that is offered to be counted
    std::int64_t channel_ = 0;  ///< the one that is offered to be decoded, from 1
    std::set<Offer> answered_;  ///< in this capture
    QTimer nextLook_;
    Subscription managerSubscription_;
    Subscription stateSubscription_;
};

}  // namespace tessivo
