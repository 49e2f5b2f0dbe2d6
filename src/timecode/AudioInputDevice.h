#pragma once

#include "platform/AudioInputUnit.h"

#include <string>
#include <vector>

namespace tessivo {

/// An audio input that the operator can choose.
struct AudioInputDevice {
    AudioDeviceId id = 0;
    std::string name;  ///< UTF-8, as the audio system shows it

    friend bool operator==(const AudioInputDevice&, const AudioInputDevice&) = default;
};

/// What is plugged in now and has inputs, in the system's order. A device that can't be read is
/// left out; this never fails.
std::vector<AudioInputDevice> fetchInputDevices(AudioInputSystem& system);

}  // namespace tessivo
