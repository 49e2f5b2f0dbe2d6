#include "platform/simulated/SimulatedAudioInput.h"

#include <algorithm>
#include <utility>

namespace tessivo {

class SimulatedAudioInput::Stream final : public AudioInputStream {
public:
    Stream(SimulatedAudioInput& system, AudioStreamFormat format)
        : system_(system), format_(format) {}
    ~Stream() override {
        stop();
        system_.openDevice_.reset();
    }

    AudioStreamFormat format() const override { return format_; }

    std::optional<AudioFailure> start(BlockHandler handler) override {
        handler_ = std::move(handler);
        if (system_.failure_) {
            return system_.failure_;
        }
        const std::lock_guard lock(system_.delivery_);
        system_.running_ = this;
        return std::nullopt;
    }

    void stop() override {
        const std::lock_guard lock(system_.delivery_);
        if (system_.running_ == this) {
            system_.running_ = nullptr;
        }
    }

    void deliver(std::span<const std::vector<float>> channels) {
        starts_.clear();
        for (const std::vector<float>& channel : channels) {
            starts_.push_back(channel.data());
        }
        handler_({.channels = starts_,
                  .frameCount = channels.front().size(),
                  .sampleRate = format_.sampleRate});
    }

private:
    SimulatedAudioInput& system_;
    const AudioStreamFormat format_;
    std::vector<const float*> starts_;
    BlockHandler handler_;
};

bool SimulatedAudioInput::deliver(std::span<const std::vector<float>> channels) {
    const std::lock_guard lock(delivery_);
    if (running_ != nullptr) {
        running_->deliver(channels);
    }
    return running_ != nullptr;
}

void SimulatedAudioInput::fetchDevices(DeviceAnswer answer) {
    ++fetches_;
    mainQueue_.post([this, answer = std::move(answer)] {
        if (isUnreadable_) {
            answer(std::nullopt);
            return;
        }
        std::vector<AudioInputDevice> devices;
        for (const Device& device : devices_) {
            devices.push_back({device.id, device.name});
        }
        answer(std::move(devices));
    });
}

AudioInputSystem::Opening SimulatedAudioInput::open(AudioDeviceId device) {
    if (failure_ && failure_->step != AudioStep::start) {
        return *failure_;
    }
    const auto found = std::ranges::find(devices_, device, &Device::id);
    if (found == devices_.end()) {
        return noSuchDevice;
    }
    if (openDevice_) {
        return deviceInUse;
    }
    openDevice_ = device;
    return std::make_shared<Stream>(*this, found->format);
}

}  // namespace tessivo
