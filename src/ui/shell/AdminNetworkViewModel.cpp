#include "ui/shell/AdminNetworkViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"

namespace tessivo {

AdminNetworkViewModel::AdminNetworkViewModel(QObject* parent) : QObject(parent) {}

void AdminNetworkViewModel::componentComplete() {
    ScreenContext& application = screenContextOf(*qmlEngine(this));
    broadcaster_.emplace(application.platform.network, application.platform.mainQueue);
    bridge_.emplace(application.platform.mainQueue);
    subscription_ = broadcaster_->didChange.subscribe([this, &application](auto) {
        if (status() == Broadcasting) {
            bridge_->attach(application.state, *broadcaster_);
        }
        Q_EMIT statusChanged();
    });
    stations_.emplace(*broadcaster_, application.platform.clock, application.platform.journal);
    broadcaster_->startChecking();
}

AdminNetworkViewModel::Status AdminNetworkViewModel::status() const {
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

QString AdminNetworkViewModel::conflict() const {
    return broadcaster_ ? toQString(broadcaster_->status().conflict) : QString();
}

}  // namespace tessivo
