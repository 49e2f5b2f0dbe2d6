#include "ui/live/LineHealthViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "ui/live/TimecodeText.h"

#include <utility>

namespace tessivo {
namespace {

/// Figures that change more often can't be read.
constexpr int lookMilliseconds = 250;

}  // namespace

LineHealthViewModel* LineHealthViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new LineHealthViewModel(screenContextOf(*engine).state);
}

LineHealthViewModel::LineHealthViewModel(AppState& state)
    : state_(state),
      manager_(state.ltcManager()),
      managerSubscription_(
          manager_.didChange.subscribe([this](LtcManager::Field field) { follow(field); })),
      stateSubscription_(
          state.didChange.subscribe([this](AppState::Field field) { follow(field); })) {
    nextLook_.setSingleShot(true);
    nextLook_.setInterval(lookMilliseconds);
    connect(&nextLook_, &QTimer::timeout, this, &LineHealthViewModel::show);
}

void LineHealthViewModel::setFollowsPosition(bool follows) {
    state_.setFollowing(follows ? AppState::Following::byPosition : AppState::Following::atStarts);
}

void LineHealthViewModel::follow(LtcManager::Field field) {
    using Field = LtcManager::Field;
    if (field == Field::isCapturing) {
        answered_.clear();
        setOffer(Offer::none);
        show();
    } else if (field == Field::health && !nextLook_.isActive()) {
        nextLook_.start();
    } else if (field == Field::countsThirty) {
        Q_EMIT countsThirtyChanged();
    }
}

void LineHealthViewModel::follow(AppState::Field field) {
    if (field == AppState::Field::following) {
        Q_EMIT followsPositionChanged();
    }
}

void LineHealthViewModel::show() {
    const TimecodeHealth::Reading reading = manager_.health();
    const bool isCapturing = manager_.isCapturing();
    QString line = isCapturing ? healthText(reading) : QString();
    const bool alarming = isCapturing && isAlarming(reading);
    if (line != line_ || alarming != alarming_) {
        line_ = std::move(line);
        alarming_ = alarming;
        Q_EMIT lineChanged();
    }
    const bool isMoot = (offer_ == Offer::channel && !manager_.channelWithTimecode()) ||
                        (offer_ == Offer::careful && manager_.isCareful()) ||
                        (offer_ == Offer::counting && manager_.countsThirty());
    if (isMoot) {
        setOffer(Offer::none);
    }
    if (isCapturing && offer_ == Offer::none) {
        const Offer offer = wanted(reading);
        channel_ = manager_.channelWithTimecode().value_or(0) + 1;
        rate_ = reading.rate ? rateText(*reading.rate) : QString();
        setOffer(answered_.contains(offer) ? Offer::none : offer);
    }
}

LineHealthViewModel::Offer LineHealthViewModel::wanted(
    const TimecodeHealth::Reading& reading) const {
    if (manager_.channelWithTimecode()) {
        return Offer::channel;
    }
    const bool isBad = reading.advice == LineAdvice::unsteady ||
                       reading.advice == LineAdvice::clipped || reading.advice == LineAdvice::hum ||
                       state_.hasMovedUnconfirmed();
    if (isBad && !manager_.isCareful() && !answered_.contains(Offer::careful)) {
        return Offer::careful;
    }
    const bool startsEarly = reading.rate && reading.rate->counting.framesPerSecond == 30;
    return startsEarly && !manager_.countsThirty() ? Offer::counting : Offer::none;
}

void LineHealthViewModel::setOffer(Offer offer) {
    if (offer != offer_) {
        offer_ = offer;
        Q_EMIT offerChanged();
    }
}

QString LineHealthViewModel::offer() const {
    switch (offer_) {
        case Offer::none:
            return {};
        case Offer::channel:
            return QStringLiteral("LTC sur le canal %1.").arg(channel_);
        case Offer::careful:
            return state_.hasMovedUnconfirmed()
                       ? QStringLiteral("Un timecode douteux a déplacé le morceau en cours.")
                       : QStringLiteral("Cette ligne pourrait faire sauter un morceau.");
        case Offer::counting:
            return QStringLiteral("Timecode à %1 : les morceaux partent jusqu'à 5 images trop tôt.")
                .arg(rate_);
    }
    return {};
}

QString LineHealthViewModel::remedy() const {
    switch (offer_) {
        case Offer::none:
            return {};
        case Offer::channel:
            return QStringLiteral("Décoder le canal %1").arg(channel_);
        case Offer::careful:
            return QStringLiteral("Activer le suivi prudent");
        case Offer::counting:
            return QStringLiteral("Compter à ") + rate_;
    }
    return {};
}

void LineHealthViewModel::accept() {
    if (offer_ == Offer::channel) {
        manager_.setSelectedChannelIndex(channel_ - 1);
    } else if (offer_ == Offer::careful) {
        manager_.setCareful(true);
    } else if (offer_ == Offer::counting) {
        manager_.setCountsThirty(true);
    }
    dismiss();
}

void LineHealthViewModel::dismiss() {
    answered_.insert(offer_);
    setOffer(Offer::none);
}

}  // namespace tessivo
