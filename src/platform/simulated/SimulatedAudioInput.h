#pragma once

#include "platform/AudioInput.h"
#include "platform/MainQueue.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// An audio system whose devices, failures and blocks a test scripts. Blocks are delivered by any
/// one thread; everything else belongs to the main thread.
class SimulatedAudioInput final : public AudioInputSystem {
public:
    struct Device {
        AudioDeviceId id = 0;
        std::string name;
        AudioStreamFormat format{};
    };

    /// What capturing a device that isn't there gives, or one while another is captured.
    static constexpr AudioFailure noSuchDevice{AudioStep::selectDevice, -9996};
    static constexpr AudioFailure deviceInUse{AudioStep::readFormat, -16};

    explicit SimulatedAudioInput(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

    const std::vector<Device>& devices() const { return devices_; }
    void setDevices(std::vector<Device> devices) { devices_ = std::move(devices); }
    /// From now on opening fails like this.
    void setFailure(std::optional<AudioFailure> failure) { failure_ = failure; }
    /// From now on the devices can't be read.
    void setUnreadable(bool isUnreadable = true) { isUnreadable_ = isUnreadable; }

    /// One block of the open device: its samples by channel, all of one length, and what should
    /// have come before it. The main thread has it on a later turn. False when no device is open.
    bool deliver(std::vector<std::vector<float>> channels, LostAudio lostBefore = {});
    /// The open device goes away.
    void endCapture();

    /// The device that is open.
    std::optional<AudioDeviceId> openDevice() const;
    /// How often the devices were asked for.
    int fetches() const { return fetches_; }

    void fetchDevices(DeviceAnswer answer) override;
    std::shared_ptr<AudioInputStream> capture(AudioDeviceId device,
                                              AudioInputHandlers handlers) override;

private:
    class Stream;

    std::optional<AudioFailure> failureOf(AudioDeviceId device) const;

    MainQueue& mainQueue_;
    std::vector<Device> devices_;
    std::optional<AudioFailure> failure_;
    bool isUnreadable_ = false;
    int fetches_ = 0;

    std::mutex delivery_;  // held while a block is delivered
    Stream* open_ = nullptr;
};

}  // namespace tessivo
