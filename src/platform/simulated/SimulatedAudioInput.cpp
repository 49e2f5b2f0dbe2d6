#include "platform/simulated/SimulatedAudioInput.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace tessivo {

class SimulatedAudioInput::Unit final : public AudioInputUnit {
public:
    explicit Unit(SimulatedAudioInput& system) : system_(system) {}
    ~Unit() override {
        leave();
        system_.take(Step::dispose);
        system_.openDevice_.reset();
    }

    AudioStatus enableInput() override { return system_.take(Step::enableInput); }
    AudioStatus disableOutput() override { return system_.take(Step::disableOutput); }

    AudioStatus setCurrentDevice(AudioDeviceId device) override {
        const AudioStatus status = system_.take(Step::setCurrentDevice);
        if (status != audioSuccess) {
            return status;
        }
        if (system_.find(device) == nullptr) {
            return noSuchDevice;
        }
        system_.openDevice_ = device;
        return audioSuccess;
    }

    AudioStatus readDeviceFormat(AudioStreamFormat& format) override {
        const AudioStatus status = system_.take(Step::readDeviceFormat);
        if (status == audioSuccess) {
            format = system_.find(*system_.openDevice_)->format;
        }
        return status;
    }

    AudioStatus setClientFormat(const AudioStreamFormat& format) override {
        system_.clientFormat_ = format;
        return system_.take(Step::setClientFormat);
    }

    AudioStatus setInputCallback(AudioInputCallback callback, void* reference) override {
        callback_ = callback;
        reference_ = reference;
        return system_.take(Step::setInputCallback);
    }

    AudioStatus initialize() override { return system_.take(Step::initialize); }

    AudioStatus start() override {
        const AudioStatus status = system_.take(Step::start);
        if (status == audioSuccess) {
            const std::lock_guard lock(system_.delivery_);
            renderStatus_ = system_.statusOf(Step::render);
            system_.running_ = this;
        }
        return status;
    }

    AudioStatus stop() override {
        leave();
        return system_.take(Step::stop);
    }

    AudioStatus uninitialize() override { return system_.take(Step::uninitialize); }

    AudioStatus render(std::uint32_t frames, std::span<const AudioBuffer> buffers) override {
        assert(buffers.size() >= block_.size());
        if (renderStatus_ != audioSuccess) {
            return renderStatus_;
        }
        for (std::size_t channel = 0; channel < block_.size(); ++channel) {
            assert(buffers[channel].byteSize >= frames * sizeof(float));
            std::copy_n(block_[channel].begin(), frames, buffers[channel].data);
        }
        return audioSuccess;
    }

    AudioStatus deliver(std::span<const std::vector<float>> block) {
        block_ = block;
        const auto frames = static_cast<std::uint32_t>(block.empty() ? 0 : block[0].size());
        return callback_(reference_, frames);
    }

    void setRenderStatus(AudioStatus status) { renderStatus_ = status; }

private:
    void leave() {
        const std::lock_guard lock(system_.delivery_);
        if (system_.running_ == this) {
            system_.running_ = nullptr;
        }
    }

    SimulatedAudioInput& system_;
    AudioInputCallback callback_ = nullptr;
    void* reference_ = nullptr;
    AudioStatus renderStatus_ = audioSuccess;
    std::span<const std::vector<float>> block_;  // while it is being delivered
};

void SimulatedAudioInput::setStatus(Step step, AudioStatus status) {
    statuses_[step] = status;
    if (step == Step::render) {
        const std::lock_guard lock(delivery_);
        if (running_ != nullptr) {
            running_->setRenderStatus(status);
        }
    }
}

std::optional<AudioStatus> SimulatedAudioInput::deliver(
    std::span<const std::vector<float>> channels) {
    const std::lock_guard lock(delivery_);
    if (running_ == nullptr) {
        return std::nullopt;
    }
    return running_->deliver(channels);
}

bool SimulatedAudioInput::isRunning() const {
    const std::lock_guard lock(delivery_);
    return running_ != nullptr;
}

bool SimulatedAudioInput::findInputComponent() {
    return take(Step::findComponent) == audioSuccess;
}

AudioStatus SimulatedAudioInput::createUnit(std::unique_ptr<AudioInputUnit>& unit) {
    const AudioStatus status = take(Step::createUnit);
    if (status == audioSuccess && !createNothing_) {
        unit = std::make_unique<Unit>(*this);
    }
    return status;
}

std::vector<AudioDeviceId> SimulatedAudioInput::deviceIds() {
    std::vector<AudioDeviceId> ids;
    for (const Device& device : devices_) {
        ids.push_back(device.id);
    }
    return ids;
}

std::optional<std::uint32_t> SimulatedAudioInput::inputConfigurationSize(AudioDeviceId device) {
    const Device* found = find(device);
    return found != nullptr ? found->configurationSize : std::nullopt;
}

std::optional<std::string> SimulatedAudioInput::deviceName(AudioDeviceId device) {
    const Device* found = find(device);
    return found != nullptr ? found->name : std::nullopt;
}

AudioStatus SimulatedAudioInput::take(Step step) {
    steps_.push_back(step);
    return statusOf(step);
}

AudioStatus SimulatedAudioInput::statusOf(Step step) const {
    const auto status = statuses_.find(step);
    return status != statuses_.end() ? status->second : audioSuccess;
}

const SimulatedAudioInput::Device* SimulatedAudioInput::find(AudioDeviceId device) const {
    const auto found = std::ranges::find(devices_, device, &Device::id);
    return found != devices_.end() ? &*found : nullptr;
}

}  // namespace tessivo
