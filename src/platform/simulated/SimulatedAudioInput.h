#pragma once

#include "platform/AudioInput.h"
#include "platform/MainQueue.h"

#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessivo {

/// An audio system whose devices, failures and blocks a test scripts. Blocks are delivered by
/// whichever single thread calls `deliver`; everything else belongs to the main thread.
class SimulatedAudioInput final : public AudioInputSystem {
public:
    struct Device {
        AudioDeviceId id = 0;
        std::string name;
        AudioStreamFormat format{};
    };

    /// What opening a device that isn't there gives, or one while another stream is open.
    static constexpr AudioFailure noSuchDevice{AudioStep::selectDevice, -9996};
    static constexpr AudioFailure deviceInUse{AudioStep::readFormat, -16};

    explicit SimulatedAudioInput(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    void setDevices(std::vector<Device> devices) { devices_ = std::move(devices); }
    /// From now on opening fails like this, or starting when that is the step.
    void setFailure(std::optional<AudioFailure> failure) { failure_ = failure; }
    /// From now on the devices can't be read.
    void setUnreadable() { isUnreadable_ = true; }

    /// One block of the running stream: its samples by channel, all of one length. False when no
    /// stream runs.
    bool deliver(std::span<const std::vector<float>> channels);

    /// The device whose stream is open, running or not.
    std::optional<AudioDeviceId> openDevice() const { return openDevice_; }
    /// How often the devices were asked for.
    int fetches() const { return fetches_; }

    void fetchDevices(DeviceAnswer answer) override;
    Opening open(AudioDeviceId device) override;

private:
    class Stream;

    MainQueue& mainQueue_;
    std::vector<Device> devices_;
    std::optional<AudioFailure> failure_;
    bool isUnreadable_ = false;
    int fetches_ = 0;
    std::optional<AudioDeviceId> openDevice_;

    std::mutex delivery_;  // held while a block is delivered, so that a stream stops between blocks
    Stream* running_ = nullptr;
};

}  // namespace tessivo
