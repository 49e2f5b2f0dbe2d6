#include "timecode/AudioInputDevice.h"

namespace tessivo {

std::vector<AudioInputDevice> fetchInputDevices(AudioInputSystem& system) {
    std::vector<AudioInputDevice> devices;
    for (const AudioDeviceId id : system.deviceIds()) {
        if (system.inputConfigurationSize(id).value_or(0) == 0) {
            continue;
        }
        if (std::optional<std::string> name = system.deviceName(id)) {
            devices.push_back({id, *std::move(name)});
        }
    }
    return devices;
}

}  // namespace tessivo
