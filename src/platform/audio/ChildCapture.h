#pragma once

#include <QTimer>

#include "base/Lifetime.h"
#include "platform/AudioInput.h"
#include "platform/audio/AudioChild.h"
#include "platform/audio/CaptureReport.h"
#include "platform/audio/InputDeviceList.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// A capture by the audio program, whose pipe this reads. Statuses are what that says (see
/// `PortAudioStream`), or a negative errno for what befalls it: -110 when it took too long, -32
/// when it ended without a word.
class ChildCapture final : public AudioInputStream {
public:
    /// What takes longer to open than `patience` is abandoned. `last` is the capture before it, as
    /// for `AudioChild`.
    ChildCapture(const std::string& program, const InputDeviceKey& device,
                 std::chrono::milliseconds patience, AudioInputHandlers handlers,
                 QPointer<QProcess>& last);

    bool isOpen() const { return report_.isOpen; }

private:
    /// A block as it came, kept while it is looked at.
    struct Storage {
        std::vector<float> samples;
        std::vector<const float*> channels;
    };

    void readAll(QProcess& process);
    bool readReport(QProcess& process);
    bool readBlock(QProcess& process);
    void end(AudioStatus status);

    const AudioInputHandlers handlers_;
    CaptureReport report_{.step = AudioStep::createUnit};
    std::optional<CapturedBlockHead> head_;  // of the block that comes next
    std::shared_ptr<Storage> storage_ = std::make_shared<Storage>();
    QTimer deadline_;
    Lifetime life_;
    AudioChild child_;
};

}  // namespace tessivo
