#include "platform/audio/AudioChild.h"

#include <QProcess>
#include <QTimer>

#include "base/Lifetime.h"

#include <chrono>
#include <utility>

namespace tessivo {
namespace {

using std::chrono_literals::operator""s;

constexpr std::chrono::seconds patienceWithLast = 1s;

}  // namespace

AudioChild::AudioChild(std::string program, QStringList arguments, Handlers handlers,
                       QPointer<QProcess>& last)
    : program_(std::move(program)),
      arguments_(std::move(arguments)),
      handlers_(std::move(handlers)),
      last_(last) {
    const bool waits = last_ && last_->state() != QProcess::NotRunning;
    if (waits) {
        QObject::connect(last_, &QProcess::finished, &context_, [this] { start(); });
    }
    QTimer::singleShot(waits ? patienceWithLast : 0s, &context_, [this] { start(); });
}

void AudioChild::start() {
    if (process_) {
        return;
    }
    process_ = new QProcess;
    last_ = process_;
    process_->setStandardInputFile(QProcess::nullDevice());
    process_->setStandardErrorFile(QProcess::nullDevice());
    const auto connectTo = [&](auto signal, const auto& handler) {
        QObject::connect(process_, signal, &context_,
                         [this, &handler] { callHandler(handler, *process_); });
    };
    connectTo(&QProcess::readyReadStandardOutput, handlers_.onOutput);
    connectTo(&QProcess::finished, handlers_.onEnd);
    QObject::connect(process_, &QProcess::errorOccurred, &context_,
                     [this](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             callHandler(handlers_.onEnd, *process_);
                         }
                     });
    process_->start(QString::fromStdString(program_), arguments_, QIODevice::ReadOnly);
}

// Destroying a QProcess waits for the child's end, and one that hangs in the kernel doesn't even
// end when it is killed. So it is destroyed once it has ended by itself, or left to the system.
AudioChild::~AudioChild() {
    if (!process_) {
        return;
    }
    process_->disconnect(&context_);
    if (process_->state() == QProcess::NotRunning) {
        process_->deleteLater();
    } else {
        QObject::connect(process_, &QProcess::finished, process_, &QObject::deleteLater);
        process_->terminate();
    }
}

}  // namespace tessivo
