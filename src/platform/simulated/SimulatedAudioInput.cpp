#include "platform/simulated/SimulatedAudioInput.h"

#include "base/Lifetime.h"
#include "platform/Turns.h"

#include <algorithm>
#include <utility>

namespace tessivo {

class SimulatedAudioInput::Stream final : public AudioInputStream {
public:
    Stream(SimulatedAudioInput& system, AudioDeviceId id, AudioInputHandlers handlers)
        : system_(system), id_(id), handlers_(std::move(handlers)), turns_(system.mainQueue_) {
        turns_.post([this] { open(); });
    }
    ~Stream() override {
        const std::lock_guard lock(system_.delivery_);
        if (system_.open_ == this) {
            system_.open_ = nullptr;
        }
    }

    AudioDeviceId id() const { return id_; }

    void deliver(std::vector<std::vector<float>> channels, LostAudio lostBefore) {
        post_([this, samples = std::move(channels), lostBefore, rate = format_.sampleRate] {
            std::vector<const float*> starts;
            for (const std::vector<float>& channel : samples) {
                starts.push_back(channel.data());
            }
            callHandler(handlers_.onBlock,
                        AudioBlock{starts, samples.front().size(), rate, lostBefore});
        });
    }

    void end(AudioFailure failure) {
        turns_.post([this, failure] { callHandler(handlers_.onEnd, failure); });
    }

private:
    void open() {
        if (const auto failure = system_.failureOf(id_)) {
            callHandler(handlers_.onEnd, *failure);
            return;
        }
        format_ = std::ranges::find(system_.devices_, id_, &Device::id)->format;
        {
            const std::lock_guard lock(system_.delivery_);
            system_.open_ = this;
        }
        callHandler(handlers_.onStart, format_);
    }

    SimulatedAudioInput& system_;
    const AudioDeviceId id_;
    const AudioInputHandlers handlers_;
    AudioStreamFormat format_;
    Turns turns_;
    const std::function<void(MainQueue::Task)> post_ = turns_.poster();
};

bool SimulatedAudioInput::deliver(std::vector<std::vector<float>> channels, LostAudio lostBefore) {
    const std::lock_guard lock(delivery_);
    if (open_ != nullptr) {
        open_->deliver(std::move(channels), lostBefore);
    }
    return open_ != nullptr;
}

void SimulatedAudioInput::endCapture() {
    open_->end({AudioStep::start, -32});
}

std::optional<AudioDeviceId> SimulatedAudioInput::openDevice() const {
    return open_ != nullptr ? std::optional(open_->id()) : std::nullopt;
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

std::optional<AudioFailure> SimulatedAudioInput::failureOf(AudioDeviceId device) const {
    if (failure_) {
        return failure_;
    }
    if (std::ranges::find(devices_, device, &Device::id) == devices_.end()) {
        return noSuchDevice;
    }
    return open_ != nullptr ? std::optional(deviceInUse) : std::nullopt;
}

std::shared_ptr<AudioInputStream> SimulatedAudioInput::capture(AudioDeviceId device,
                                                               AudioInputHandlers handlers) {
    return std::make_shared<Stream>(*this, device, std::move(handlers));
}

}  // namespace tessivo
