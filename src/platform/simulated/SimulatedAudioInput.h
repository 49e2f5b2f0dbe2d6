#pragma once

#include "platform/AudioInputUnit.h"

#include <map>
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
    enum class Step {
        findComponent,
        createUnit,
        enableInput,
        disableOutput,
        setCurrentDevice,
        readDeviceFormat,
        setClientFormat,
        setInputCallback,
        initialize,
        start,
        render,
        stop,
        uninitialize,
        dispose,
    };

    struct Device {
        AudioDeviceId id = 0;
        std::optional<std::string> name;                      ///< absent: can't be read
        AudioStreamFormat format{};                           ///< its own rate and inputs
        std::optional<std::uint32_t> configurationSize = 24;  ///< bytes, as in the interface
    };

    /// What choosing a device that isn't there gives.
    static constexpr AudioStatus noSuchDevice = -9996;

    void setDevices(std::vector<Device> devices) { devices_ = std::move(devices); }
    /// From now on `step` gives `status`; 0 lets it succeed again. A failing creation makes no
    /// unit; `createNothing` makes none and reports success.
    void setStatus(Step step, AudioStatus status);
    void setCreateNothing(bool nothing) { createNothing_ = nothing; }

    /// One block of the running unit: its samples by channel, all of one length. Gives what the
    /// callback returned; nothing when no unit runs.
    std::optional<AudioStatus> deliver(std::span<const std::vector<float>> channels);

    bool isRunning() const;
    /// The device of the open unit.
    std::optional<AudioDeviceId> openDevice() const { return openDevice_; }
    /// The format in which blocks were last asked for.
    AudioStreamFormat clientFormat() const { return clientFormat_; }
    /// Every step taken so far, in order; `render` isn't listed.
    const std::vector<Step>& steps() const { return steps_; }

    bool findInputComponent() override;
    AudioStatus createUnit(std::unique_ptr<AudioInputUnit>& unit) override;
    std::vector<AudioDeviceId> deviceIds() override;
    std::optional<std::uint32_t> inputConfigurationSize(AudioDeviceId device) override;
    std::optional<std::string> deviceName(AudioDeviceId device) override;

private:
    class Unit;

    AudioStatus take(Step step);
    AudioStatus statusOf(Step step) const;
    const Device* find(AudioDeviceId device) const;

    std::vector<Device> devices_;
    std::map<Step, AudioStatus> statuses_;
    std::vector<Step> steps_;
    bool createNothing_ = false;
    std::optional<AudioDeviceId> openDevice_;
    AudioStreamFormat clientFormat_;

    // Held while a block is delivered, so that a unit stops between blocks.
    mutable std::mutex delivery_;
    Unit* running_ = nullptr;
};

}  // namespace tessivo
