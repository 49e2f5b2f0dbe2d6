#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <string>

class QProcess;

namespace tessivo {

/// One run of the audio program. Main thread only; nothing here waits.
///
/// Why another process: a driver or a sound server that hangs can be left alone only with the
/// process that waits for it, and one that crashes takes that process down, not the show. PortAudio
/// also looks at the devices only when it is initialised, which it can't be again while one of its
/// streams is open or hangs, and JACK's library doesn't survive the end of its server.
class AudioChild {
public:
    /// Both may destroy the child.
    struct Handlers {
        std::function<void(QProcess&)> onOutput;  ///< there is something new to read
        std::function<void(QProcess&)> onEnd;     ///< it has ended, or couldn't be started
    };

    /// Runs `program` on a later turn. `last` is the run before it and then this one: it outlives
    /// the child, and is waited for up to a second, so that a device which only one process can
    /// open is free again.
    AudioChild(std::string program, QStringList arguments, Handlers handlers,
               QPointer<QProcess>& last);
    /// Asks the program to end. The system takes care of one that doesn't.
    ~AudioChild();
    AudioChild(const AudioChild&) = delete;
    AudioChild& operator=(const AudioChild&) = delete;

private:
    void start();

    const std::string program_;
    const QStringList arguments_;
    const Handlers handlers_;
    QPointer<QProcess>& last_;
    QProcess* process_ = nullptr;
    QObject context_;  // last: what is due later ends before the rest
};

}  // namespace tessivo
