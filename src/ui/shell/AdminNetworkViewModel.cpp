#include "ui/shell/AdminNetworkViewModel.h"

#include <QQmlEngine>

#include "kit/LocalTime.h"
#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "platform/Clock.h"

#include <algorithm>
#include <utility>

namespace tessivo {
namespace {

// In seconds. Whoever only looks whether somebody is there, as another admin does, is no station.
constexpr double settlingTime = 1.0;
constexpr double lossIsTold = 600.0;

}  // namespace

AdminNetworkViewModel::AdminNetworkViewModel(QObject* parent) : QObject(parent) {}

void AdminNetworkViewModel::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    const Platform& platform = context_->platform;
    settling_.emplace(platform.mainQueue);
    forgetting_.emplace(platform.mainQueue);
    broadcaster_.emplace(platform.network, platform.mainQueue);
    bridge_.emplace(platform.mainQueue);
    subscription_ = broadcaster_->didChange.subscribe([this](auto) {
        const auto goOn = status() == Checking ? nullptr : std::exchange(context_->goOn, nullptr);
        if (status() == Broadcasting) {
            if (goOn) {
                goOn();
                goesOn_ = true;
            }
            bridge_->attach(context_->state, *broadcaster_);
        }
        settling_->callOff();
        settling_->postAfter(settlingTime, [this] { countStations(); });
        Q_EMIT statusChanged();
    });
    troubles_ = platform.network.troubleDidChange.subscribe([this] { Q_EMIT statusChanged(); });
    stations_.emplace(*broadcaster_, platform.clock, platform.journal);
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

QString AdminNetworkViewModel::stations() const {
    if (stationCount_ == 0) {
        return QStringLiteral("Aucun poste ne suit");
    }
    return stationCount_ == 1 ? QStringLiteral("1 poste suit")
                              : QStringLiteral("%1 postes suivent").arg(stationCount_);
}

QString AdminNetworkViewModel::trouble() const {
    if (!context_) {
        return {};
    }
    if (const std::string rival = broadcaster_->rival(); !rival.empty()) {
        return QStringLiteral("Un autre admin conduit aussi\u00A0: ") + toShownText(rival);
    }
    const auto trouble = context_->platform.network.trouble();
    if (trouble == Network::Trouble::offline) {
        return QStringLiteral("Cet ordinateur n'est plus sur le réseau");
    }
    if (trouble == Network::Trouble::responderSilent) {
        return QStringLiteral("Le réseau de découverte ne répond pas");
    }
    if (lostCount_ == 0) {
        return {};
    }
    return QStringLiteral("%1 de moins depuis %2")
        .arg(lostCount_)
        .arg(localTime(lostAt_).toString(QStringLiteral("HH:mm")));
}

void AdminNetworkViewModel::countStations() {
    const std::size_t before = std::exchange(stationCount_, broadcaster_->connectionCount());
    if (stationCount_ < before) {
        lostCount_ += before - stationCount_;
        lostAt_ = context_->platform.clock.now();
        forgetting_->callOff();
        forgetting_->postAfter(lossIsTold, [this] {
            lostCount_ = 0;
            Q_EMIT statusChanged();
        });
    } else {
        lostCount_ -= std::min(lostCount_, stationCount_ - before);
    }
    Q_EMIT statusChanged();
}

QString AdminNetworkViewModel::conflict() const {
    return broadcaster_ ? toQString(broadcaster_->status().conflict) : QString();
}

}  // namespace tessivo
