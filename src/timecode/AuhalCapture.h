#pragma once

#include "platform/AudioInputUnit.h"
#include "timecode/AudioBlock.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

/// Opens one audio input device and hands over every block that it delivers, all channels, at the
/// device's own sample rate. What becomes of the blocks is left to the receiver.
class AuhalCapture {
public:
    explicit AuhalCapture(AudioInputSystem& system) : system_(system) {}
    AuhalCapture(const AuhalCapture&) = delete;
    AuhalCapture& operator=(const AuhalCapture&) = delete;

    /// Called by `start`, on the main thread, when the device's format is known and before any
    /// block arrives: the place to allocate what `onSamples` will need.
    std::function<void(const AudioStreamFormat&)> onFormat;

    /// Called on the audio thread with each block, which is good until the call returns. Must
    /// neither wait nor allocate. Both callbacks are set before `start` and not changed while
    /// running.
    std::function<void(const AudioBlock&)> onSamples;

    /// Opens and starts `device`, after stopping whatever ran before. Gives the French sentence
    /// that says which step failed, or nothing on success. What a failed start has set up stays
    /// until the next `stop` or `start`.
    std::optional<std::string> start(AudioDeviceId device);

    /// Returns when no callback is running any more, with everything released; does nothing when
    /// nothing is open.
    void stop();

    /// Renders the block that is being delivered and passes it on; on the audio thread. A status
    /// other than 0 means that the block was dropped.
    AudioStatus handleRender(std::uint32_t frames);

private:
    using Failure = std::optional<std::string>;

    Failure openUnit(AudioDeviceId device);
    Failure agreeOnFormat();
    Failure run();

    AudioInputSystem& system_;
    AudioStreamFormat streamFormat_;        // of the device's side
    std::vector<float> samples_;            // one stretch of the longest slice per channel
    std::vector<AudioBuffer> buffers_;      // the stretches of samples_; empty when closed
    std::unique_ptr<AudioInputUnit> unit_;  // last: stopped before its buffers go
};

}  // namespace tessivo
