#include "ui/live/TimecodeViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"

#include <algorithm>
#include <cmath>

namespace tessivo {
namespace {

constexpr int frameMilliseconds = 16;
/// A peak of a quarter of full scale fills the meter.
constexpr float meterGain = 4.0F;
/// Half pixels of a meter of 20: finer steps would only redraw the same picture.
constexpr float meterSteps = 40.0F;
/// Above this peak there is something on the wire.
constexpr float audibleLevel = 0.02F;

}  // namespace

TimecodeViewModel* TimecodeViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new TimecodeViewModel(screenContextOf(*engine).state.ltcManager());
}

TimecodeViewModel::TimecodeViewModel(LtcManager& manager)
    : manager_(manager),
      subscription_(
          manager.didChange.subscribe([this](LtcManager::Field field) { update(field); })) {
    nextFrame_.setSingleShot(true);
    nextFrame_.setInterval(frameMilliseconds);
    nextFrame_.setTimerType(Qt::PreciseTimer);
    connect(&nextFrame_, &QTimer::timeout, this, &TimecodeViewModel::show);
    devices_.present(manager_.availableInputDevices());
    shown_ = read();
}

QString TimecodeViewModel::lastError() const {
    return toQString(manager_.lastError().value_or(std::string()));
}

QString TimecodeViewModel::selectedDeviceName() const {
    return devices_.rows()[static_cast<std::size_t>(selectedDeviceRow())].name;
}

void TimecodeViewModel::toggleCapture() {
    if (manager_.isCapturing()) {
        manager_.stopCapturing();
    } else {
        manager_.startCapturing();
    }
}

void TimecodeViewModel::refreshDevices() {
    manager_.fetchInputDevices();
}

void TimecodeViewModel::chooseDevice(int row) {
    const auto& rows = devices_.rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size() ||
        !rows[static_cast<std::size_t>(row)].id) {
        return;
    }
    manager_.setSelectedDeviceId(rows[static_cast<std::size_t>(row)].id);
    if (manager_.isCapturing()) {
        manager_.stopCapturing();
        manager_.startCapturing();
    }
}

void TimecodeViewModel::update(LtcManager::Field field) {
    using Field = LtcManager::Field;
    switch (field) {
        case Field::isCapturing:
            Q_EMIT isCapturingChanged();
            break;
        case Field::lastError:
            Q_EMIT lastErrorChanged();
            break;
        case Field::availableInputDevices:
            devices_.present(manager_.availableInputDevices());
            Q_EMIT selectedDeviceChanged();
            break;
        case Field::isFetchingInputDevices:
            Q_EMIT isFetchingDevicesChanged();
            break;
        case Field::isCareful:
            Q_EMIT isCarefulChanged();
            break;
        case Field::hasLostAudio:
            Q_EMIT hasLostAudioChanged();
            break;
        case Field::selectedDeviceId:
            Q_EMIT selectedDeviceChanged();
            break;
        case Field::currentTimecodeDisplay:
        case Field::detectedFps:
        case Field::signalDetected:
        case Field::rawAudioLevel:
            if (!nextFrame_.isActive()) {
                nextFrame_.start();
            }
            break;
        case Field::detectedChannelCount:
        case Field::levelsPerChannel:
        case Field::selectedChannelIndex:
        case Field::buffersReceivedCount:
        case Field::countsThirty:
        case Field::health:
        case Field::channelWithTimecode:
            break;  // not here
    }
}

TimecodeViewModel::Shown TimecodeViewModel::read() const {
    const float fill = std::min(manager_.rawAudioLevel() * meterGain, 1.0F);
    return {toQString(manager_.currentTimecodeDisplay()), static_cast<int>(manager_.detectedFps()),
            manager_.signalDetected(),
            static_cast<double>(std::round(fill * meterSteps) / meterSteps),
            manager_.rawAudioLevel() > audibleLevel};
}

void TimecodeViewModel::show() {
    const Shown before = std::exchange(shown_, read());
    if (before.timecode != shown_.timecode || before.fps != shown_.fps) {
        Q_EMIT timecodeChanged();
    }
    if (before.signal != shown_.signal) {
        Q_EMIT signalDetectedChanged();
    }
    if (before.meterFill < shown_.meterFill || before.meterFill > shown_.meterFill ||
        before.hasLevel != shown_.hasLevel) {
        Q_EMIT meterChanged();
    }
}

}  // namespace tessivo
