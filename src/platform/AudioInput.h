#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace tessivo {

/// Result of a call into the audio system: 0 is success, anything else is the system's own code,
/// shown to the operator as it is.
using AudioStatus = std::int32_t;
constexpr AudioStatus audioSuccess = 0;

/// Identifies one audio device. It stays the same for a device during the whole run, whatever is
/// plugged in or out.
using AudioDeviceId = std::uint32_t;

/// An audio input that the operator can choose.
struct AudioInputDevice {
    AudioDeviceId id = 0;
    std::string name;  ///< UTF-8, as the audio system shows it

    friend bool operator==(const AudioInputDevice&, const AudioInputDevice&) = default;
};

/// What a device delivers: 32-bit float samples, one stretch per channel.
struct AudioStreamFormat {
    double sampleRate = 0.0;  ///< samples per second
    std::uint32_t channelsPerFrame = 0;

    friend bool operator==(const AudioStreamFormat&, const AudioStreamFormat&) = default;
};

/// A view of one block of audio: 32-bit float samples, nominally from -1 to 1. It owns nothing;
/// whoever hands it over says how long it is good for.
struct AudioBlock {
    std::span<const float* const> channels;  ///< each channel's first sample
    std::size_t frameCount = 0;              ///< samples in each channel, may be 0
    double sampleRate = 0.0;                 ///< samples per second

    std::span<const float> channel(std::size_t index) const {
        return {channels[index], frameCount};
    }
};

/// What it takes to capture from a device, in this order. Each audio system has its own calls for
/// them; one that does several at once names the one that its status speaks of.
enum class AudioStep {
    findSystem,
    createUnit,
    enableInput,
    disableOutput,
    selectDevice,
    readFormat,
    setFormat,
    setCallback,
    initialize,
    start,
};

/// Why a device could not be captured.
struct AudioFailure {
    AudioStep step{};
    AudioStatus status = audioSuccess;
};

/// One opened input device. Destroying it ends the stream and closes the device. Every call may
/// block for as long as a driver or a sound server takes, destroying it too. Main thread only.
class AudioInputStream {
public:
    /// Takes each block that the device delivers, all channels, on the audio system's real-time
    /// thread; the block is good until the call returns. Neither waits nor allocates.
    using BlockHandler = std::function<void(const AudioBlock&)>;

    virtual ~AudioInputStream() = default;

    /// The device's own sample rate and number of input channels.
    virtual AudioStreamFormat format() const = 0;
    /// Once per stream; nothing on success.
    virtual std::optional<AudioFailure> start(BlockHandler handler) = 0;
    /// Returns only when the handler isn't running and will not run again. May be called again.
    virtual void stop() = 0;
};

/// The computer's audio inputs. Main thread only.
class AudioInputSystem {
public:
    /// The devices with inputs and a name, in the system's order; nothing when that can't be read.
    using DeviceAnswer = std::function<void(std::optional<std::vector<AudioInputDevice>>)>;
    using Opening = std::variant<std::shared_ptr<AudioInputStream>, AudioFailure>;

    virtual ~AudioInputSystem() = default;

    /// Looks at what is plugged in now, and calls `answer` once on a later turn of the main thread,
    /// unless the system has gone. Doesn't wait. A device that is being captured goes on
    /// undisturbed.
    virtual void fetchDevices(DeviceAnswer answer) = 0;

    /// Opens a device with all its inputs. May block for as long as a driver or a sound server
    /// takes.
    virtual Opening open(AudioDeviceId device) = 0;
};

}  // namespace tessivo
