#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Instant.h"
#include "base/Signal.h"
#include "platform/Turns.h"
#include "sync/AdminBroadcaster.h"
#include "sync/AdminSyncBridge.h"
#include "sync/StationJournal.h"

#include <cstddef>
#include <optional>

namespace tessivo {

struct ScreenContext;

/// The admin computer's place on the network as its screens read it: looks for another admin from
/// its creation on, then tells the live state until its end.
class AdminNetworkViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(Status status READ status NOTIFY statusChanged)
    /// Of a conflict: the other admin's name, or why there is no broadcast.
    Q_PROPERTY(QString conflict READ conflict NOTIFY statusChanged)
    /// How many stations follow, in words.
    Q_PROPERTY(QString stations READ stations NOTIFY statusChanged)
    /// What the stations may suffer from: a network that is gone or silent, or how many of them
    /// were lost and when, until they are back or ten minutes have passed; empty for nothing.
    Q_PROPERTY(QString trouble READ trouble NOTIFY statusChanged)
    /// Whether a show that was under way goes on from here.
    Q_PROPERTY(bool goesOn READ goesOn NOTIFY statusChanged)

public:
    enum Status { Checking, Conflict, Broadcasting };
    Q_ENUM(Status)

    explicit AdminNetworkViewModel(QObject* parent = nullptr);
    void classBegin() override {}
    void componentComplete() override;

    Status status() const;
    QString conflict() const;
    QString stations() const;
    QString trouble() const;
    bool goesOn() const { return goesOn_; }

Q_SIGNALS:
    void statusChanged();

private:
    void countStations();

    // All from componentComplete on.
    ScreenContext* context_ = nullptr;
    std::optional<AdminBroadcaster> broadcaster_;
    std::optional<AdminSyncBridge> bridge_;
    std::optional<StationJournal> stations_;
    bool goesOn_ = false;
    std::size_t stationCount_ = 0;
    std::size_t lostCount_ = 0;  // and not back
    Instant lostAt_;             // the last of them
    std::optional<Turns> settling_;
    std::optional<Turns> forgetting_;
    Subscription subscription_;
    Subscription troubles_;
};

}  // namespace tessivo
