#include "ui/live/TimecodeText.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace tessivo {
namespace {

using Motion = TimecodeHealth::Motion;

QString decimal(double value, int places) {
    return QLocale(QLocale::French).toString(value, 'f', places);
}

/// A whole number without places: 24, but 23,98.
QString placed(double value) {
    return decimal(value, std::abs(value - std::round(value)) < 0.005 ? 0 : 2);
}

QString motionText(Motion motion) {
    switch (motion) {
        case Motion::running:
            return QStringLiteral("en marche");
        case Motion::stopped:
            return QStringLiteral("à l'arrêt");
        case Motion::jumped:
            return QStringLiteral("saut");
        case Motion::backwards:
            return QStringLiteral("à l'envers, pas suivi");
    }
    return {};
}

QString adviceText(LineAdvice advice) {
    switch (advice) {
        case LineAdvice::none:
            return {};
        case LineAdvice::weak:
            return QStringLiteral("faible");
        case LineAdvice::clipped:
            return QStringLiteral("saturé");
        case LineAdvice::hum:
            return QStringLiteral("ronflement ?");
        case LineAdvice::unsteady:
            return QStringLiteral("instable");
        case LineAdvice::noTimecode:
            return QStringLiteral("pas de timecode : musique ? mauvais canal ?");
    }
    return {};
}

/// Digital silence has no level in decibels; below this nothing is worth a figure either.
constexpr double leastDecibels = -99.0;

QString levelText(float peak) {
    const double decibels = 20.0 * std::log10(static_cast<double>(peak));
    return decibels < leastDecibels ? QStringLiteral("silence")
                                    : QStringLiteral("%1 dBFS").arg(std::lround(decibels));
}

}  // namespace

QString rateText(const TimecodeRate& rate) {
    return placed(rate.framesPerSecond()) +
           (rate.counting.dropFrame ? QStringLiteral(" DF") : QString());
}

QString healthText(const TimecodeHealth::Reading& reading) {
    if (!reading.motion && reading.advice == LineAdvice::none) {
        return {};
    }
    QStringList parts;
    if (reading.rate) {
        parts += rateText(*reading.rate);
        parts += decimal(reading.speed * 100.0, std::abs(reading.speed - 1.0) < 0.0005 ? 0 : 1) +
                 QStringLiteral(" %");
    }
    if (reading.due > 0) {
        parts += QStringLiteral("%1 sur %2 images").arg(reading.came).arg(reading.due);
    }
    if (reading.motion) {
        parts += motionText(*reading.motion);
    }
    parts += levelText(reading.peak);
    if (reading.advice != LineAdvice::none) {
        parts += adviceText(reading.advice);
    }
    return parts.join(QStringLiteral(" · "));
}

bool isAlarming(const TimecodeHealth::Reading& reading) {
    return reading.advice != LineAdvice::none || reading.motion == Motion::jumped ||
           reading.motion == Motion::backwards;
}

}  // namespace tessivo
