#pragma once

#include "platform/AudioInput.h"
#include "platform/audio/AudioBlockQueue.h"

#include <portaudio.h>
#include <semaphore.h>

#include <optional>

namespace tessivo {

/// One PortAudio input stream. Statuses are PortAudio's codes (`PaErrorCode`); where PortAudio only
/// says `paUnanticipatedHostError`, the host's own code is given instead if there is one, because
/// it tells the crew more: on ALSA a negative errno, such as -16 for a device in use. The two
/// ranges don't meet, for PortAudio's codes are below -9000. Every call may block.
class PortAudioStream {
public:
    PortAudioStream();
    ~PortAudioStream();
    PortAudioStream(const PortAudioStream&) = delete;
    PortAudioStream& operator=(const PortAudioStream&) = delete;

    /// Opens a device of the present session with all its inputs: only then is it known what it
    /// really runs at. Once, and before everything else.
    AudioStatus open(PaDeviceIndex device);
    AudioStreamFormat format() const { return format_; }

    AudioStatus start();
    /// What the audio thread fills, once open.
    AudioBlockQueue& blocks() { return *blocks_; }
    /// Returns once per block that has come, or false after a quarter of a second without one, or
    /// on a signal.
    bool waitForBlock() const;
    /// False once the stream has ended because its device or sound server went away.
    bool isActive() const;

private:
    static int deliver(const void* input, void* output, unsigned long frames,
                       const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                       void* stream);

    PaStream* stream_ = nullptr;
    AudioStreamFormat format_;
    std::optional<AudioBlockQueue> blocks_;
    mutable sem_t arrived_;  // counts the blocks that nobody waited for yet
};

}  // namespace tessivo
