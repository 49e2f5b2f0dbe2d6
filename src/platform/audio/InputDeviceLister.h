#pragma once

#include <QObject>
#include <QTimer>

#include "platform/audio/InputDeviceList.h"

#include <chrono>
#include <functional>
#include <string>
#include <variant>
#include <vector>

class QProcess;

namespace tessivo {

/// Looks for audio inputs in a child process. Main thread only; nothing here waits.
///
/// Why another process: PortAudio looks at the devices only when it is initialised, which it can't
/// be again while one of its streams is open. A child has a PortAudio of its own, so the capture
/// here doesn't lose a sample, and a driver that hangs or crashes while it is being probed takes
/// the child down, not the show. Stopping and reopening the stream would cost blocks; imitating
/// PortAudio's list with ALSA's and JACK's own functions would have to agree with it for ever.
class InputDeviceLister {
public:
    enum class Failure {
        notStarted,  ///< there is no such program, or no process for it
        noAnswer,    ///< it failed, crashed, said something else, or took too long
    };
    using Result = std::variant<InputDeviceList, Failure>;
    using Answer = std::function<void(const Result&)>;

    static constexpr std::chrono::milliseconds patience = std::chrono::seconds(5);

    /// `program` prints `encodeInputDevices(listInputDevices())`; what takes longer than `deadline`
    /// is killed.
    explicit InputDeviceLister(std::string program, std::chrono::milliseconds deadline = patience);
    /// Answers that are still due never come.
    ~InputDeviceLister();

    /// Runs the program and calls `answer` once on a later turn of the event loop; while it runs,
    /// later ones get the same answer.
    void run(Answer answer);

private:
    void start();
    void end(const Result& result);
    void letGo();

    const QString program_;
    std::vector<Answer> answers_;
    QProcess* process_ = nullptr;
    QTimer deadline_;
    QObject context_;  // last: what is due later ends before the rest
};

}  // namespace tessivo
