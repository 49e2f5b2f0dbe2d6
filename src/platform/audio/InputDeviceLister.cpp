#include "platform/audio/InputDeviceLister.h"

#include <QProcess>

#include <utility>

namespace tessivo {

InputDeviceLister::InputDeviceLister(std::string program, std::chrono::milliseconds deadline)
    : program_(QString::fromStdString(program)) {
    deadline_.setSingleShot(true);
    deadline_.setInterval(deadline);
    QObject::connect(&deadline_, &QTimer::timeout, &context_, [this] { end(Failure::noAnswer); });
}

InputDeviceLister::~InputDeviceLister() {
    letGo();
}

void InputDeviceLister::run(Answer answer) {
    answers_.push_back(std::move(answer));
    if (answers_.size() == 1) {
        QTimer::singleShot(0, &context_, [this] { start(); });
    }
}

void InputDeviceLister::start() {
    process_ = new QProcess;
    process_->setStandardInputFile(QProcess::nullDevice());
    process_->setStandardErrorFile(QProcess::nullDevice());
    QObject::connect(process_, &QProcess::errorOccurred, &context_,
                     [this](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             end(Failure::notStarted);
                         }
                     });
    QObject::connect(process_, &QProcess::finished, &context_,
                     [this](int code, QProcess::ExitStatus status) {
                         std::optional<InputDeviceList> devices;
                         if (status == QProcess::NormalExit && code == 0) {
                             devices = decodeInputDevices(process_->readAll().toStdString());
                         }
                         end(devices ? Result(*std::move(devices)) : Failure::noAnswer);
                     });
    deadline_.start();
    process_->start(program_, {}, QIODevice::ReadOnly);
}

void InputDeviceLister::end(const Result& result) {
    letGo();
    for (const Answer& answer : std::exchange(answers_, {})) {
        answer(result);
    }
}

// Destroying a QProcess waits for the child's end, and one that hangs in the kernel doesn't even
// end when it is killed. So it is destroyed once it has ended by itself, or left to the system.
void InputDeviceLister::letGo() {
    deadline_.stop();
    if (QProcess* process = std::exchange(process_, nullptr)) {
        process->disconnect(&context_);
        if (process->state() == QProcess::NotRunning) {
            process->deleteLater();
        } else {
            QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
            process->kill();
        }
    }
}

}  // namespace tessivo
