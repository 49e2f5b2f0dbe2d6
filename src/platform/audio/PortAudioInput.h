#pragma once

#include "platform/AudioInput.h"
#include "platform/audio/InputDeviceLister.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

class PortAudioStream;

/// The computer's audio inputs through PortAudio, which is initialised only while a stream is open:
/// each one that is opened sees what is plugged in at that moment. One stream at a time.
class PortAudioInput final : public AudioInputSystem {
public:
    /// `lister` is the path of the program that lists the devices (see `InputDeviceLister`). Only
    /// when it can't be started does this process look for itself, which may block and tells
    /// nothing new while a device is open.
    explicit PortAudioInput(std::string lister) : lister_(std::move(lister)) {}

    void fetchDevices(DeviceAnswer answer) override;
    /// `paInvalidDevice` for an id never given, a device that has gone and one without inputs.
    Opening open(AudioDeviceId device) override;

private:
    std::optional<std::vector<AudioInputDevice>> devicesOf(const InputDeviceLister::Result& result);
    void keepCaptured(std::vector<AudioDeviceId>& found) const;
    AudioDeviceId idOf(const InputDeviceKey& key);

    std::vector<InputDeviceKey> seen_;    // a device's id is its place here, plus 1
    std::vector<AudioDeviceId> present_;  // at the last look
    AudioDeviceId openDevice_ = 0;
    std::weak_ptr<const PortAudioStream> open_;
    InputDeviceLister lister_;
};

}  // namespace tessivo
