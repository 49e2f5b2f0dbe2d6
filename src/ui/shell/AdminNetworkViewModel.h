#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "sync/AdminBroadcaster.h"
#include "sync/AdminSyncBridge.h"
#include "sync/StationJournal.h"

#include <optional>

namespace tessivo {

/// The admin computer's place on the network as its screens read it: looks for another admin from
/// its creation on, then tells the live state until its end.
class AdminNetworkViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Of a conflict: the other admin's name, or why there is no broadcast.
    Q_PROPERTY(QString conflict READ conflict NOTIFY statusChanged)

public:
    enum Status { Checking, Conflict, Broadcasting };
    Q_ENUM(Status)

    explicit AdminNetworkViewModel(QObject* parent = nullptr);
    void classBegin() override {}
    void componentComplete() override;

    Status status() const;
    QString conflict() const;

Q_SIGNALS:
    void statusChanged();

private:
    // All from componentComplete on.
    std::optional<AdminBroadcaster> broadcaster_;
    std::optional<AdminSyncBridge> bridge_;
    std::optional<StationJournal> stations_;
    Subscription subscription_;
};

}  // namespace tessivo
