#pragma once

#include "platform/AudioInputUnit.h"
#include "platform/audio/InputDeviceList.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

class PortAudioSession;
class PortAudioUnit;

/// The computer's audio inputs through PortAudio. Units must not outlive it. PortAudio is
/// initialised only while there is a unit, so each new unit sees what is plugged in at that moment.
class PortAudioInput final : public AudioInputSystem {
public:
    /// `lister` is the path of the program that lists the devices (see `listInputDevicesInChild`).
    /// Without it the list can't be refreshed while a device is captured.
    explicit PortAudioInput(std::string lister);
    ~PortAudioInput() override;

    bool findInputComponent() override;
    AudioStatus createUnit(std::unique_ptr<AudioInputUnit>& unit) override;
    std::vector<AudioDeviceId> deviceIds() override;
    std::optional<std::uint32_t> inputConfigurationSize(AudioDeviceId device) override;
    std::optional<std::string> deviceName(AudioDeviceId device) override;

private:
    friend class PortAudioUnit;

    struct PresentDevice {
        AudioDeviceId id = 0;
        std::uint32_t channels = 0;
    };

    std::optional<InputDeviceList> look() const;
    AudioDeviceId idOf(const InputDeviceKey& key);
    std::optional<InputDeviceKey> keyOf(AudioDeviceId device) const;
    const PresentDevice* present(AudioDeviceId device) const;
    void keepCaptured(std::vector<PresentDevice>& found) const;

    std::string lister_;
    std::unique_ptr<PortAudioSession> prepared_;  // what findInputComponent leaves to createUnit
    std::vector<InputDeviceKey> seen_;            // a device's id is its place here, plus 1
    std::vector<PresentDevice> present_;
    const PortAudioUnit* unit_ = nullptr;  // the one that was made last, while it lives
};

}  // namespace tessivo
