#include "platform/audio/InputDeviceList.h"

#include <algorithm>
#include <utility>

namespace tessivo {

void append(InputDeviceList& devices, ListedInputDevice device) {
    device.key.ordinal = static_cast<std::uint32_t>(
        std::count_if(devices.begin(), devices.end(), [&](const ListedInputDevice& other) {
            return other.key.hostApi == device.key.hostApi && other.key.name == device.key.name;
        }));
    devices.push_back(std::move(device));
}

// Two fields per device, each ended by a NUL, which no name can hold. An empty host system ends the
// list, so that one that was cut short is noticed.
std::string encodeInputDevices(const InputDeviceList& devices) {
    std::string text;
    for (const ListedInputDevice& device : devices) {
        text += device.key.hostApi + '\0' + device.key.name + '\0';
    }
    return text + '\0';
}

std::optional<InputDeviceList> decodeInputDevices(const std::string& text) {
    InputDeviceList devices;
    std::size_t position = 0;
    const auto field = [&]() -> std::optional<std::string> {
        const std::size_t end = text.find('\0', position);
        if (end == std::string::npos) {
            return std::nullopt;
        }
        const std::size_t start = std::exchange(position, end + 1);
        return text.substr(start, end - start);
    };
    while (const auto hostApi = field()) {
        if (hostApi->empty()) {
            return devices;
        }
        if (const auto name = field()) {
            append(devices, {{*hostApi, *name, 0}, 0});
        }
    }
    return std::nullopt;
}

}  // namespace tessivo
