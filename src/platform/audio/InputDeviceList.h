#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// What makes a device the same one from one look to the next. PortAudio's indexes change whenever
/// something is plugged in or out, and names alone may repeat.
struct InputDeviceKey {
    std::string hostApi;        ///< "ALSA", "JACK Audio Connection Kit", ...
    std::string name;           ///< UTF-8, as the host API gives it
    std::uint32_t ordinal = 0;  ///< among the devices of equal host API and name

    friend bool operator==(const InputDeviceKey&, const InputDeviceKey&) = default;
};

/// A device with inputs, as one look found it.
struct ListedInputDevice {
    InputDeviceKey key;
    int index = 0;  ///< PortAudio's, valid only in the session it was read in
};

using InputDeviceList = std::vector<ListedInputDevice>;

/// Adds a device, and gives its key the ordinal among the equal ones that are listed already.
void append(InputDeviceList& devices, ListedInputDevice device);

/// The same list as text that crosses a pipe, and back; nothing when the text isn't whole. Indexes
/// don't cross, for they mean nothing in another process.
std::string encodeInputDevices(const InputDeviceList& devices);
std::optional<InputDeviceList> decodeInputDevices(const std::string& text);

}  // namespace tessivo
