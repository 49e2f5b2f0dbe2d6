#include "platform/audio/PortAudioStream.h"

#include "platform/audio/PortAudioSession.h"

#include <utility>

namespace tessivo {
namespace {

// Seconds of samples that an ALSA device may hold back before it loses some. Its blocks are an
// eighth of that (see PortAudioSession): 5 ms is short beside a timecode frame of 33 ms or more,
// and a thread without real-time priority that is late by 40 ms still loses nothing. The frames per
// block are left to PortAudio, since only then does one device block give one callback: a block
// length of our own made a sound server deliver pairs at twice the interval.
constexpr PaTime alsaBufferLength = 0.04;

AudioStatus statusOf(PaError error) {
    if (error == paUnanticipatedHostError) {
        const PaHostErrorInfo* host = Pa_GetLastHostErrorInfo();
        if (host != nullptr && host->errorCode != 0) {
            return static_cast<AudioStatus>(host->errorCode);
        }
    }
    return error;
}

// Other host systems have blocks of their own making and give their latency as it is.
PaTime latencyFor(const PaDeviceInfo& info) {
    return Pa_GetHostApiInfo(info.hostApi)->type == paALSA ? alsaBufferLength
                                                           : info.defaultLowInputLatency;
}

}  // namespace

PortAudioStream::PortAudioStream(std::unique_ptr<PortAudioSession> session)
    : session_(std::move(session)) {}

PortAudioStream::~PortAudioStream() {
    stop();
    if (stream_ != nullptr) {
        Pa_CloseStream(stream_);
    }
}

AudioStatus PortAudioStream::open(PaDeviceIndex device) {
    const PaDeviceInfo& info = *Pa_GetDeviceInfo(device);
    const PaStreamParameters input{device, info.maxInputChannels, paFloat32 | paNonInterleaved,
                                   latencyFor(info), nullptr};
    const PaError error =
        Pa_OpenStream(&stream_, &input, nullptr, info.defaultSampleRate,
                      paFramesPerBufferUnspecified, paClipOff | paDitherOff, deliver, this);
    if (error != paNoError) {
        stream_ = nullptr;
        return statusOf(error);
    }
    device_ = device;
    // The rate may differ a little from the one asked for. The channels can't: should the device
    // be opened with more of them, PortAudio hands over only what was asked for.
    format_ = {Pa_GetStreamInfo(stream_)->sampleRate,
               static_cast<std::uint32_t>(info.maxInputChannels)};
    return audioSuccess;
}

std::optional<AudioFailure> PortAudioStream::start(BlockHandler handler) {
    handler_ = std::move(handler);
    const AudioStatus status = statusOf(Pa_StartStream(stream_));
    return status == audioSuccess ? std::nullopt
                                  : std::optional(AudioFailure{AudioStep::start, status});
}

// Aborted rather than stopped: ALSA's stop waits for a block, which a dead device never delivers,
// and there is nothing to play out. Either way PortAudio joins its thread, also one that has ended
// by itself because the device went away.
void PortAudioStream::stop() {
    if (stream_ == nullptr || Pa_IsStreamStopped(stream_) == 1) {
        return;
    }
    if (isLostJackStream()) {
        stream_ = nullptr;
        static_cast<void>(session_.release());
        return;
    }
    Pa_AbortStream(stream_);
}

// When the JACK server goes away, the thread that called us ends with it, but PortAudio still waits
// ten minutes for that thread in each of its functions that give the stream back. The stream and
// the session are left to the process then: other devices can be captured as before, and JACK again
// after the next start of the program.
bool PortAudioStream::isLostJackStream() const {
    return Pa_GetHostApiInfo(Pa_GetDeviceInfo(device_)->hostApi)->type == paJACK &&
           Pa_IsStreamActive(stream_) == 0;
}

bool PortAudioStream::isDelivering() const {
    return stream_ != nullptr && Pa_IsStreamActive(stream_) == 1;
}

int PortAudioStream::deliver(const void* input, void*, unsigned long frames,
                             const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags, void* stream) {
    const auto& self = *static_cast<const PortAudioStream*>(stream);
    if (input != nullptr) {
        self.handler_(
            {.channels = {static_cast<const float* const*>(input), self.format_.channelsPerFrame},
             .frameCount = frames,
             .sampleRate = self.format_.sampleRate});
    }
    return paContinue;
}

}  // namespace tessivo
