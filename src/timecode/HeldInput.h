#pragma once

#include "platform/MainQueue.h"
#include "platform/Turns.h"
#include "timecode/AuhalCapture.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// Holds one audio input open, also when its device or its server dies and comes back meanwhile.
/// The callbacks are set before it is opened; each may close it or open another. Main thread only.
class HeldInput {
public:
    /// What is given here outlives this.
    HeldInput(MainQueue& mainQueue, AudioInputSystem& audio);
    HeldInput(const HeldInput&) = delete;
    HeldInput& operator=(const HeldInput&) = delete;

    /// Called with each block, which is good until the call returns.
    std::function<void(const AudioBlock&)> onBlock;
    /// Called when a device that was never open can't be opened, with the French sentence that says
    /// at which step. It isn't held any more.
    std::function<void(const std::string& why)> onRefused;
    /// Called when the input gives nothing any more; from then on it is opened anew each second.
    std::function<void()> onLost;
    /// Called before the first block after that.
    std::function<void()> onBack;
    /// Called with the devices that there are, when one was looked for by its name, and that one if
    /// it is among them.
    std::function<void(std::vector<AudioInputDevice>, std::optional<AudioDeviceId>)> onListed;

    void open(AudioDeviceId device);
    /// Opens an input that an earlier run held: as long as it isn't there, it is one that has died.
    void openAgain(std::string name);
    /// Nothing of it is told afterwards.
    void close();

private:
    void begin();
    void find();
    void noteSound();
    void countSilence();
    void end(const std::string& why);
    void lose();

    MainQueue& mainQueue_;
    AudioInputSystem& audio_;
    std::optional<AudioDeviceId> device_;  ///< none until it is found by its name
    std::string name_;                     ///< only of one to be found
    bool wasOpen_ = false;
    bool isLost_ = false;  ///< and nothing heard since
    int silentLooks_ = 0;
    std::unique_ptr<MainQueue::Repetition> looks_;  ///< at whether sound comes, once open
    AuhalCapture capture_;
    Turns reopening_;
    Lifetime held_;  ///< from one opening to its end
};

}  // namespace tessivo
