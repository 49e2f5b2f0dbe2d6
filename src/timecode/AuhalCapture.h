#pragma once

#include "platform/AudioInput.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tessivo {

/// Opens one audio input device and hands over every block that it delivers, all channels, at the
/// device's own sample rate. What becomes of the blocks is left to the receiver.
class AuhalCapture {
public:
    explicit AuhalCapture(AudioInputSystem& system) : system_(system) {}
    AuhalCapture(const AuhalCapture&) = delete;
    AuhalCapture& operator=(const AuhalCapture&) = delete;

    /// Called by `start`, on the main thread, when the device's format is known and before any
    /// block arrives: the place to allocate what `onSamples` will need. At least one channel.
    std::function<void(const AudioStreamFormat&)> onFormat;

    /// Called on the audio thread with each block. Both callbacks are set before `start` and not
    /// changed while running.
    AudioInputStream::BlockHandler onSamples;

    /// Opens and starts `device`, after stopping whatever ran before; blocks for as long as the
    /// audio system does. Gives the French sentence that says which step failed, or nothing on
    /// success. What a failed start has set up stays until the next `stop` or `start`.
    std::optional<std::string> start(AudioDeviceId device);

    /// Returns when no callback is running any more, with everything released, for which the audio
    /// system may block; does nothing when nothing is open.
    void stop();

private:
    AudioInputSystem& system_;
    std::shared_ptr<AudioInputStream> stream_;
};

}  // namespace tessivo
