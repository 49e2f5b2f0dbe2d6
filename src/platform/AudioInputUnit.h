#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessivo {

/// Result of one step of setting up a capture: 0 is success, anything else is the audio system's
/// own code, shown to the operator as it is.
using AudioStatus = std::int32_t;
constexpr AudioStatus audioSuccess = 0;

/// Identifies one audio device. It stays the same for a device during the whole run, whatever is
/// plugged in or out.
using AudioDeviceId = std::uint32_t;

/// Linear PCM, 32-bit float, native endianness, one buffer per channel (non-interleaved).
struct AudioStreamFormat {
    double sampleRate = 0.0;  ///< samples per second
    std::uint32_t channelsPerFrame = 0;

    friend bool operator==(const AudioStreamFormat&, const AudioStreamFormat&) = default;
};

/// Storage for one channel of a block.
struct AudioBuffer {
    float* data = nullptr;
    std::uint32_t byteSize = 0;  ///< bytes to fill from `data` on
};

/// What the unit calls on its real-time thread for each block that the device delivers. `frames`
/// never exceeds `AudioInputUnit::maximumFramesPerSlice`: a longer device block arrives in slices.
using AudioInputCallback = AudioStatus (*)(void* reference, std::uint32_t frames);

/// One opened input of the audio system, set up step by step in the order of its functions.
/// Destroying it stops the stream and gives everything back. All functions but `render` run on the
/// main thread.
class AudioInputUnit {
public:
    static constexpr std::uint32_t maximumFramesPerSlice = 4096;

    virtual ~AudioInputUnit() = default;

    virtual AudioStatus enableInput() = 0;
    virtual AudioStatus disableOutput() = 0;
    virtual AudioStatus setCurrentDevice(AudioDeviceId device) = 0;
    /// The device-side input format: its own sample rate and its number of input channels.
    virtual AudioStatus readDeviceFormat(AudioStreamFormat& format) = 0;
    /// The format in which `render` fills buffers.
    virtual AudioStatus setClientFormat(const AudioStreamFormat& format) = 0;
    virtual AudioStatus setInputCallback(AudioInputCallback callback, void* reference) = 0;
    virtual AudioStatus initialize() = 0;
    virtual AudioStatus start() = 0;
    /// Returns only when the callback isn't running and will not run again.
    virtual AudioStatus stop() = 0;
    virtual AudioStatus uninitialize() = 0;

    /// Copies the block that is being delivered, one buffer per client channel. Callable only from
    /// within the input callback, on its thread. Doesn't allocate, lock or wait.
    virtual AudioStatus render(std::uint32_t frames, std::span<const AudioBuffer> buffers) = 0;
};

/// The computer's audio system: what devices there are, and units to capture from them. Main thread
/// only.
class AudioInputSystem {
public:
    virtual ~AudioInputSystem() = default;

    /// Whether the system has anything that can capture at all.
    virtual bool findInputComponent() = 0;
    /// Makes a unit; on failure `unit` stays empty or the status isn't 0.
    virtual AudioStatus createUnit(std::unique_ptr<AudioInputUnit>& unit) = 0;

    /// Looks at what is plugged in now, and gives the devices in the system's order; empty when
    /// that can't be read. A device that is being captured goes on undisturbed.
    virtual std::vector<AudioDeviceId> deviceIds() = 0;
    /// Size of the device's input stream configuration, in bytes, 0 for a device without inputs;
    /// nothing when it can't be read.
    virtual std::optional<std::uint32_t> inputConfigurationSize(AudioDeviceId device) = 0;
    virtual std::optional<std::string> deviceName(AudioDeviceId device) = 0;
};

}  // namespace tessivo
