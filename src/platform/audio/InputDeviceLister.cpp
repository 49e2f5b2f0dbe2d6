#include "platform/audio/InputDeviceLister.h"

#include <QProcess>

#include <utility>

namespace tessivo {

InputDeviceLister::InputDeviceLister(std::string program, std::chrono::milliseconds patience)
    : program_(std::move(program)) {
    deadline_.setSingleShot(true);
    deadline_.setInterval(patience);
    QObject::connect(&deadline_, &QTimer::timeout, &deadline_, [this] { end(std::nullopt); });
}

void InputDeviceLister::run(Answer answer) {
    answers_.push_back(std::move(answer));
    if (child_) {
        return;
    }
    const auto onEnd = [this](QProcess& process) {
        const bool isWell = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        end(isWell ? decodeInputDevices(process.readAll().toStdString()) : std::nullopt);
    };
    child_ = std::make_unique<AudioChild>(
        program_, QStringList(), AudioChild::Handlers{.onOutput = {}, .onEnd = onEnd}, last_);
    deadline_.start();
}

void InputDeviceLister::end(const std::optional<InputDeviceList>& devices) {
    deadline_.stop();
    child_.reset();
    for (const Answer& answer : std::exchange(answers_, {})) {
        answer(devices);
    }
}

}  // namespace tessivo
