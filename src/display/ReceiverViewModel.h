#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

#include "base/Instant.h"
#include "base/Signal.h"
#include "display/PassagesContent.h"
#include "display/StageContent.h"
#include "platform/MainQueue.h"
#include "sync/FollowedShow.h"

#include <memory>
#include <optional>

namespace tessivo {

struct ScreenContext;

/// A display station as its screens read it. It follows an admin from its creation to its end. The
/// last picture stays when the admin is lost; while there is one, the computer is kept awake.
class ReceiverViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY pictureChanged)
    /// How long the admin has said nothing, in words; empty while that is no reason for doubt.
    Q_PROPERTY(QString silence READ silence NOTIFY silenceChanged)
    /// Whether the admin that is connected may be left because it says nothing.
    Q_PROPERTY(bool adminIsMute READ adminIsMute NOTIFY silenceChanged)
    /// Whether nothing can be found because the responder of this computer doesn't answer.
    Q_PROPERTY(bool responderIsSilent READ responderIsSilent NOTIFY troubleChanged)
    /// How wrong this computer's clock is, in words; empty unless the admin's is known and another.
    Q_PROPERTY(QString clockFault READ clockFault NOTIFY clockFaultChanged)
    Q_PROPERTY(tessivo::StageContent* content READ content CONSTANT)
    Q_PROPERTY(tessivo::PassagesContent* passages READ passages CONSTANT)

public:
    enum Status {
        Searching,  ///< no admin
        Waiting,    ///< connected to an admin that hasn't told its live state yet
        Following,
    };
    Q_ENUM(Status)

    explicit ReceiverViewModel(QObject* parent = nullptr);
    ~ReceiverViewModel() override;
    void classBegin() override {}
    void componentComplete() override;

    Status status() const { return status_; }
    bool hasPicture() const { return hasPicture_; }
    const QString& silence() const { return silence_; }
    bool adminIsMute() const { return adminIsMute_; }
    bool responderIsSilent() const;
    const QString& clockFault() const { return clockFault_; }
    /// The received show with the time left, which moves once a second: by the admin's clock where
    /// that is known, else by this computer's own.
    StageContent* content() { return &content_; }
    /// Whether taking over would replace another version of the show that this computer has.
    Q_INVOKABLE bool hasOtherVersion() const;
    /// Leaves the last state, with its countdown, to the admin mode that is chosen next.
    Q_INVOKABLE void prepareTakeOver();
    /// The passages of the received show. Worked out only once somebody has asked for them.
    PassagesContent* passages();

Q_SIGNALS:
    void statusChanged();
    void pictureChanged();
    void silenceChanged();
    void clockFaultChanged();
    void troubleChanged();

private:
    void update();
    void updateSilence();
    void setHasPicture(bool hasPicture);
    void updateClockFault();
    void startTick();
    void tick();
    void presentPassages();
    void presentRemaining();

    ScreenContext* context_ = nullptr;  // these two from componentComplete on
    std::optional<FollowedShow> show_;
    Subscription subscription_;
    Subscription troubles_;
    Status status_ = Searching;
    bool hasPicture_ = false;
    QString silence_;
    bool adminIsMute_ = false;
    QString clockFault_;
    StageContent content_;
    std::optional<PassagesContent> passages_;
    Instant now_;    // at the last tick, by this computer's clock
    Moment moment_;  // likewise, by the one that nobody sets
    std::unique_ptr<MainQueue::Repetition> tick_;
};

}  // namespace tessivo
