#include "platform/audio/ChildCapture.h"

#include <QProcess>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace tessivo {
namespace {

QStringList argumentsFor(const InputDeviceKey& device) {
    return {QString::fromStdString(device.hostApi), QString::fromStdString(device.name),
            QString::number(device.ordinal)};
}

// Takes a value from what has arrived, once all of it has.
template <typename Value>
std::optional<Value> take(QProcess& process) {
    Value value;
    if (process.bytesAvailable() < qint64{sizeof value}) {
        return std::nullopt;
    }
    process.read(reinterpret_cast<char*>(&value), sizeof value);
    return value;
}

}  // namespace

ChildCapture::ChildCapture(const std::string& program, const InputDeviceKey& device,
                           std::chrono::milliseconds patience, AudioInputHandlers handlers,
                           QPointer<QProcess>& last)
    : handlers_(std::move(handlers)),
      child_(program, argumentsFor(device),
             {.onOutput = life_.guard([this](QProcess& process) { readAll(process); }),
              .onEnd = life_.guard([this](QProcess&) { end(-EPIPE); })},
             last) {
    deadline_.setSingleShot(true);
    QObject::connect(&deadline_, &QTimer::timeout, &deadline_, [this] { end(-ETIMEDOUT); });
    deadline_.start(patience);
}

void ChildCapture::readAll(QProcess& process) {
    bool goesOn = true;
    // A handler may end the capture.
    auto readNext =
        life_.guard([&] { goesOn = report_.isOpen ? readBlock(process) : readReport(process); });
    while (std::exchange(goesOn, false)) {
        readNext();
    }
}

bool ChildCapture::readReport(QProcess& process) {
    const auto report = take<CaptureReport>(process);
    if (!report) {
        return false;
    }
    report_ = *report;
    if (report_.status != audioSuccess) {
        end(report_.status);
    } else if (report_.isOpen) {
        deadline_.stop();
        callHandler(handlers_.onStart, report->format);
    }
    return true;
}

bool ChildCapture::readBlock(QProcess& process) {
    if (!head_) {
        head_ = take<CapturedBlockHead>(process);
    }
    const std::size_t channelCount = report_.format.channelsPerFrame;
    const std::size_t sampleCount = head_ ? channelCount * head_->frameCount : 0;
    const auto byteCount = static_cast<qint64>(sampleCount * sizeof(float));
    if (!head_ || process.bytesAvailable() < byteCount) {
        return false;
    }
    const CapturedBlockHead head = *std::exchange(head_, std::nullopt);
    const std::shared_ptr<Storage> storage = storage_;
    storage->samples.resize(std::max(storage->samples.size(), sampleCount));
    process.read(reinterpret_cast<char*>(storage->samples.data()), byteCount);
    storage->channels.clear();
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        storage->channels.push_back(storage->samples.data() + channel * head.frameCount);
    }
    callHandler(handlers_.onBlock, AudioBlock{storage->channels, head.frameCount,
                                              report_.format.sampleRate, head.lostBefore});
    return true;
}

void ChildCapture::end(AudioStatus status) {
    deadline_.stop();
    life_.callOff();
    callHandler(handlers_.onEnd, AudioFailure{report_.step, status});
}

}  // namespace tessivo
