#pragma once

#include "platform/AudioInput.h"

#include <functional>
#include <memory>
#include <string>

namespace tessivo {

/// Opens one audio input device and hands over every block that it delivers, all channels, at the
/// device's own sample rate. What becomes of the blocks is left to the receiver. The callbacks are
/// set before `start`; each may stop or start the capture.
class AuhalCapture {
public:
    explicit AuhalCapture(AudioInputSystem& system) : system_(system) {}
    AuhalCapture(const AuhalCapture&) = delete;
    AuhalCapture& operator=(const AuhalCapture&) = delete;

    /// Called when the device is open, before any block.
    std::function<void()> onStart;
    /// Called with each block, which is good until the call returns.
    std::function<void(const AudioBlock&)> onSamples;
    /// Called when the device couldn't be opened, or when the capture has ended by itself, with the
    /// French sentence that says at which step.
    std::function<void(const std::string&)> onEnd;

    /// Stops whatever ran before and begins to open `device`; what comes of it is told later.
    void start(AudioDeviceId device);

    /// Nothing is told any more. Does nothing when nothing runs.
    void stop() { stream_.reset(); }

private:
    void end(const std::string& sentence);

    AudioInputSystem& system_;
    std::shared_ptr<AudioInputStream> stream_;
};

}  // namespace tessivo
