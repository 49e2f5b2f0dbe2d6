#pragma once

#include "platform/AudioInput.h"

#include <portaudio.h>
#include <semaphore.h>

#include <boost/lockfree/spsc_queue.hpp>
#include <cstddef>
#include <optional>

namespace tessivo {

/// One PortAudio input stream, whose blocks go to a file descriptor. Statuses are PortAudio's codes
/// (`PaErrorCode`); where PortAudio only says `paUnanticipatedHostError`, the host's own code is
/// given instead if there is one, because it tells the crew more: on ALSA a negative errno, such as
/// -16 for a device in use. The two ranges don't meet, for PortAudio's codes are below -9000. Every
/// call may block.
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
    /// Writes the blocks that have come to `descriptor` (see `CapturedBlockHead`), or waits for
    /// one, a quarter of a second at most. While that stands still a second of audio waits; what
    /// comes beyond is dropped, and the next block that finds room says how much is missing before
    /// it. False when nobody reads any more, or a signal has interrupted the writing.
    bool passOn(int descriptor);
    /// False once the stream has ended because its device or sound server went away.
    bool isActive() const;

private:
    static int deliver(const void* input, void* output, unsigned long frames,
                       const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags,
                       void* stream);
    void keep(const float* const* channels, std::size_t frames);

    PaStream* stream_ = nullptr;
    AudioStreamFormat format_;
    std::optional<boost::lockfree::spsc_queue<std::byte>> waiting_;  // blocks as they are written
    LostAudio lost_;  // since the last block that found room; audio thread only
    sem_t arrived_;   // counts the blocks that nobody waited for yet
};

}  // namespace tessivo
