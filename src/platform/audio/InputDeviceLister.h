#pragma once

#include <QTimer>

#include "platform/audio/AudioChild.h"
#include "platform/audio/InputDeviceList.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// Looks for audio inputs in a child process. Main thread only; nothing here waits.
class InputDeviceLister {
public:
    /// Nothing when the program failed, crashed, said something else, or took too long.
    using Answer = std::function<void(const std::optional<InputDeviceList>&)>;

    /// `program` is the audio program; what takes longer than `patience` is abandoned.
    InputDeviceLister(std::string program, std::chrono::milliseconds patience);

    /// Runs the program and calls `answer` once on a later turn of the event loop; while it runs,
    /// later ones get the same answer. Those that are still due when the lister goes never come.
    void run(Answer answer);

private:
    void end(const std::optional<InputDeviceList>& devices);

    const std::string program_;
    std::vector<Answer> answers_;
    QTimer deadline_;
    QPointer<QProcess> last_;
    std::unique_ptr<AudioChild> child_;
};

}  // namespace tessivo
