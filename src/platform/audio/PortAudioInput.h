#pragma once

#include <QPointer>

#include "platform/AudioInput.h"
#include "platform/audio/InputDeviceLister.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QProcess;

namespace tessivo {

class ChildCapture;

/// The computer's audio inputs through PortAudio, in processes of their own (see `AudioChild`):
/// each look and each capture sees what is plugged in at that moment.
class PortAudioInput final : public AudioInputSystem {
public:
    /// `program` is the path of the audio program. A look at the devices, or opening one, that
    /// takes longer than `patience` is abandoned.
    explicit PortAudioInput(std::string program,
                            std::chrono::milliseconds patience = std::chrono::seconds(2))
        : program_(program), patience_(patience), lister_(std::move(program), patience) {}

    void fetchDevices(DeviceAnswer answer) override;
    /// An id never given, a device that has gone and one without inputs fail with PortAudio's code
    /// for an invalid device.
    std::shared_ptr<AudioInputStream> capture(AudioDeviceId device,
                                              AudioInputHandlers handlers) override;

private:
    std::vector<AudioInputDevice> devicesOf(const InputDeviceList& listed);
    void keepCaptured(std::vector<AudioDeviceId>& found) const;
    AudioDeviceId idOf(const InputDeviceKey& key);

    const std::string program_;
    const std::chrono::milliseconds patience_;
    std::vector<InputDeviceKey> seen_;    // a device's id is its place here, plus 1
    std::vector<AudioDeviceId> present_;  // at the last look
    AudioDeviceId captured_ = 0;
    std::weak_ptr<const ChildCapture> capture_;
    QPointer<QProcess> last_;
    InputDeviceLister lister_;
};

}  // namespace tessivo
