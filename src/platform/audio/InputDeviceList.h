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

struct ListedInputDevice {
    InputDeviceKey key;
    std::uint32_t channels = 0;  ///< at least 1
    int index = 0;               ///< PortAudio's, valid only in the session it was read in
};

using InputDeviceList = std::vector<ListedInputDevice>;

/// The devices with inputs, in PortAudio's order. Needs a `PortAudioSession`.
InputDeviceList listInputDevices();

/// The same list as text that crosses a pipe, and back; nothing when the text isn't whole. Indexes
/// don't cross, for they mean nothing in another process.
std::string encodeInputDevices(const InputDeviceList& devices);
std::optional<InputDeviceList> decodeInputDevices(const std::string& text);

/// Runs the program `lister`, which prints `encodeInputDevices(listInputDevices())`, and gives what
/// it found; nothing when it can't be run, fails or takes longer than five seconds.
///
/// Why another process: PortAudio looks at the devices only when it is initialised, which it can't
/// be again while one of its streams is open. A child has a PortAudio of its own, so the capture
/// here doesn't lose a sample, and a driver that hangs or crashes while it is being probed takes
/// the child down, not the show. Stopping and reopening the stream would cost blocks; imitating
/// PortAudio's list with ALSA's and JACK's own functions would have to agree with it for ever.
std::optional<InputDeviceList> listInputDevicesInChild(const std::string& lister);

}  // namespace tessivo
