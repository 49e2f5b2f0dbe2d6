#pragma once

#include "base/Lifetime.h"
#include "platform/AudioInput.h"
#include "platform/MainQueue.h"
#include "platform/Turns.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// Captures from one audio input, all channels at the device's own sample rate, also when the
/// device or its server dies and comes back meanwhile. What becomes of the sound is left to the
/// receiver. The callbacks are set before it is started; each may stop it or start another input.
/// Main thread only.
class AuhalCapture {
public:
    /// What is given here outlives this.
    AuhalCapture(MainQueue& mainQueue, AudioInputSystem& system);
    AuhalCapture(const AuhalCapture&) = delete;
    AuhalCapture& operator=(const AuhalCapture&) = delete;

    /// Called with each block, which is good until the call returns.
    std::function<void(const AudioBlock&)> onSamples;
    /// Called when a device that was never open can't be opened, with the French sentence that says
    /// at which step. Its capture has ended.
    std::function<void(const std::string& why)> onRefused;
    /// Called when the input gives nothing any more; from then on it is opened anew each second.
    std::function<void()> onLost;
    /// Called before the first block after that.
    std::function<void()> onBack;
    /// Called with the devices that there are, when one was looked for by its name, and that one if
    /// it is among them.
    std::function<void(std::vector<AudioInputDevice>, std::optional<AudioDeviceId>)> onListed;

    /// Stops whatever ran before and begins to open `device`; what comes of it is told later.
    void start(AudioDeviceId device);
    /// Likewise with an input that an earlier run captured: as long as it isn't there, it is one
    /// that has died.
    void startAgain(std::string name);
    /// Nothing is told any more. Does nothing when nothing runs.
    void stop();

private:
    void open();
    void find();
    void noteOpen();
    void noteSound();
    void countSilence();
    void end(const std::string& why);
    void lose();

    MainQueue& mainQueue_;
    AudioInputSystem& system_;
    std::optional<AudioDeviceId> device_;  ///< none until it is found by its name
    std::string name_;                     ///< only of one to be found
    bool wasOpen_ = false;
    bool isLost_ = false;  ///< and nothing heard since
    int silentLooks_ = 0;
    std::unique_ptr<MainQueue::Repetition> looks_;  ///< at whether sound comes, once open
    std::shared_ptr<AudioInputStream> stream_;
    Turns reopening_;
    Lifetime started_;  ///< from one start to the stop
};

}  // namespace tessivo
