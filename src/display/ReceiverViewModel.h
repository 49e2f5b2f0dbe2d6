#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

#include "base/Instant.h"
#include "base/Signal.h"
#include "display/PassagesContent.h"
#include "display/StageContent.h"
#include "platform/MainQueue.h"
#include "sync/ReceiverClient.h"

#include <memory>
#include <optional>

namespace tessivo {

struct ScreenContext;

/// A display station as its screens read it. It follows an admin from its creation to its end, and
/// keeps the computer awake while there is a show to see.
class ReceiverViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
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
    /// The received show with the time left by this computer's own clock, which moves once a
    /// second.
    StageContent* content() { return &content_; }
    /// The passages of the received show. Worked out only once somebody has asked for them.
    PassagesContent* passages();

Q_SIGNALS:
    void statusChanged();

private:
    void update();
    void setFollowing(bool following);
    void presentPassages();
    void presentRemaining();

    ScreenContext* context_ = nullptr;  // these two from componentComplete on
    std::optional<ReceiverClient> client_;
    Subscription subscription_;
    Status status_ = Searching;
    StageContent content_;
    std::optional<PassagesContent> passages_;
    Instant now_;
    std::unique_ptr<MainQueue::Repetition> tick_;
};

}  // namespace tessivo
