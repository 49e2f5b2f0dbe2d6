#pragma once

#include "platform/AudioInputUnit.h"

#include <portaudio.h>

#include <memory>

namespace tessivo {

class PortAudioInput;
class PortAudioSession;

/// One PortAudio input stream. Statuses are PortAudio's codes (`PaErrorCode`); where PortAudio only
/// says `paUnanticipatedHostError`, the host's own code is given instead if there is one, because
/// it tells the crew more: on ALSA a negative errno, such as -16 for a device in use. The two
/// ranges don't meet, for PortAudio's codes are below -9000.
class PortAudioUnit final : public AudioInputUnit {
public:
    PortAudioUnit(PortAudioInput& system, std::unique_ptr<PortAudioSession> session);
    ~PortAudioUnit() override;

    /// Nothing to do: PortAudio streams have only the directions that they are opened with.
    AudioStatus enableInput() override { return audioSuccess; }
    AudioStatus disableOutput() override { return audioSuccess; }
    /// `paInvalidDevice` for an id never given, a device that has gone and one without inputs.
    AudioStatus setCurrentDevice(AudioDeviceId device) override;
    /// Opens the stream with all inputs of the device: only then is it known what the device
    /// really runs at.
    AudioStatus readDeviceFormat(AudioStreamFormat& format) override;
    /// The device's own rate and at most its channels; PortAudio's code for what doesn't fit.
    AudioStatus setClientFormat(const AudioStreamFormat& format) override;
    AudioStatus setInputCallback(AudioInputCallback callback, void* reference) override;
    /// Checks that the steps before it were taken.
    AudioStatus initialize() override;
    AudioStatus start() override;
    AudioStatus stop() override;
    AudioStatus uninitialize() override;
    AudioStatus render(std::uint32_t frames, std::span<const AudioBuffer> buffers) override;

    AudioDeviceId device() const { return device_; }
    /// False once the stream was stopped, or ended because its device or sound server went away.
    bool isDelivering() const;

private:
    static int streamCallback(const void* input, void* output, unsigned long frames,
                              const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                              void* unit);
    void deliver(const float* const* channels, unsigned long frames);
    AudioStatus open(PaDeviceIndex index, const PaDeviceInfo& info);
    bool isLostJackStream() const;

    PortAudioInput& system_;
    std::unique_ptr<PortAudioSession> session_;
    AudioDeviceId device_ = 0;
    PaDeviceIndex index_ = paNoDevice;
    PaStream* stream_ = nullptr;
    AudioStreamFormat deviceFormat_;
    AudioStreamFormat clientFormat_;
    AudioInputCallback callback_ = nullptr;
    void* reference_ = nullptr;

    // The slice that is being delivered; the audio thread's alone.
    const float* const* channels_ = nullptr;
    std::size_t sliceStart_ = 0;
    std::uint32_t sliceFrames_ = 0;
};

}  // namespace tessivo
