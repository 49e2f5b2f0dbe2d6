#include "ui/AdminNetwork.h"

#include <QQmlEngine>

#include "display/Application.h"
#include "display/SongInfo.h"

namespace tessivo {

AdminNetwork::AdminNetwork(QObject* parent) : QObject(parent) {}

void AdminNetwork::componentComplete() {
    Application& application = applicationOf(*qmlEngine(this));
    broadcaster_.emplace(application.platform.network, application.platform.mainQueue);
    bridge_.emplace(application.platform.mainQueue);
    subscription_ = broadcaster_->didChange.subscribe([this, &application](auto) {
        if (status() == Broadcasting) {
            bridge_->attach(application.state, *broadcaster_);
        }
        Q_EMIT statusChanged();
    });
    broadcaster_->startChecking();
}

AdminNetwork::Status AdminNetwork::status() const {
    if (!broadcaster_) {
        return Checking;
    }
    switch (broadcaster_->status().kind) {
        case AdminNetworkStatus::Kind::checking:
            return Checking;
        case AdminNetworkStatus::Kind::conflict:
            return Conflict;
        case AdminNetworkStatus::Kind::broadcasting:
            return Broadcasting;
    }
    Q_UNREACHABLE();
}

QString AdminNetwork::conflict() const {
    return broadcaster_ ? toQString(broadcaster_->status().conflict) : QString();
}

}  // namespace tessivo
