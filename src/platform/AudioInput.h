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

/// Audio that was dropped for want of room.
struct LostAudio {
    std::uint64_t blocks = 0;
    std::uint64_t frames = 0;

    friend bool operator==(const LostAudio&, const LostAudio&) = default;
};

/// A view of one block of audio: 32-bit float samples, nominally from -1 to 1. It owns nothing;
/// whoever hands it over says how long it is good for.
struct AudioBlock {
    std::span<const float* const> channels;  ///< each channel's first sample
    std::size_t frameCount = 0;              ///< samples in each channel, may be 0
    double sampleRate = 0.0;                 ///< samples per second
    LostAudio lostBefore{};                  ///< what should have come since the block before

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

/// The capture of one input device, from before it is open. Destroying it ends the capture: nothing
/// is heard of it any more, whatever a driver or a sound server still does. Main thread only.
class AudioInputStream {
public:
    virtual ~AudioInputStream() = default;
};

/// What becomes of a capture, told on later turns of the main thread. A handler may destroy the
/// stream.
struct AudioInputHandlers {
    /// The device is open, and this is what its blocks will be like.
    std::function<void(const AudioStreamFormat&)> onStart;
    /// Each block that the device delivers, all channels, in order. It is good until the call
    /// returns. When the main thread stands still, a second of audio waits for it; what comes
    /// beyond is dropped.
    std::function<void(const AudioBlock&)> onBlock;
    /// The device couldn't be opened, or the capture has ended by itself. Nothing comes after this.
    std::function<void(const AudioFailure&)> onEnd;
};

/// The computer's audio inputs. Nothing here waits, whatever a driver or a sound server does. Main
/// thread only.
class AudioInputSystem {
public:
    /// The devices with inputs and a name, in the system's order; nothing when that can't be read.
    using DeviceAnswer = std::function<void(std::optional<std::vector<AudioInputDevice>>)>;

    virtual ~AudioInputSystem() = default;

    /// Looks at what is plugged in now, and calls `answer` once on a later turn of the main thread,
    /// unless the system has gone. A device that is being captured goes on undisturbed.
    virtual void fetchDevices(DeviceAnswer answer) = 0;

    /// Opens a device with all its inputs. One that takes longer than two seconds for it has
    /// failed. One capture at a time: the one before is destroyed first.
    virtual std::shared_ptr<AudioInputStream> capture(AudioDeviceId device,
                                                      AudioInputHandlers handlers) = 0;
};

}  // namespace tessivo
