#pragma once

#include "platform/AudioInput.h"

#include <portaudio.h>

#include <memory>

namespace tessivo {

class PortAudioSession;

/// One PortAudio input stream. Statuses are PortAudio's codes (`PaErrorCode`); where PortAudio only
/// says `paUnanticipatedHostError`, the host's own code is given instead if there is one, because
/// it tells the crew more: on ALSA a negative errno, such as -16 for a device in use. The two
/// ranges don't meet, for PortAudio's codes are below -9000.
class PortAudioStream final : public AudioInputStream {
public:
    /// Holds `session`, in which the device to open was found.
    explicit PortAudioStream(std::unique_ptr<PortAudioSession> session);
    ~PortAudioStream() override;
    PortAudioStream(const PortAudioStream&) = delete;
    PortAudioStream& operator=(const PortAudioStream&) = delete;

    /// Opens a device with all its inputs: only then is it known what it really runs at. Once, and
    /// before everything else; may block.
    AudioStatus open(PaDeviceIndex device);

    AudioStreamFormat format() const override { return format_; }
    std::optional<AudioFailure> start(BlockHandler handler) override;
    void stop() override;

    /// False once the stream was stopped, or ended because its device or sound server went away.
    bool isDelivering() const;

private:
    static int deliver(const void* input, void* output, unsigned long frames,
                       const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                       void* stream);
    bool isLostJackStream() const;

    std::unique_ptr<PortAudioSession> session_;
    PaDeviceIndex device_ = paNoDevice;
    PaStream* stream_ = nullptr;
    AudioStreamFormat format_;
    BlockHandler handler_;
};

}  // namespace tessivo
