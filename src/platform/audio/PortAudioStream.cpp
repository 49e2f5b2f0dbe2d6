#include "platform/audio/PortAudioStream.h"

#include <ctime>

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

PortAudioStream::PortAudioStream() {
    sem_init(&arrived_, 0, 0);
}

// Aborted rather than stopped: ALSA's stop waits for a block, which a dead device never delivers,
// and there is nothing to play out.
PortAudioStream::~PortAudioStream() {
    if (stream_ != nullptr) {
        Pa_AbortStream(stream_);
        Pa_CloseStream(stream_);
    }
    sem_destroy(&arrived_);
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
    // The rate may differ a little from the one asked for. The channels can't: should the device
    // be opened with more of them, PortAudio hands over only what was asked for.
    format_ = {Pa_GetStreamInfo(stream_)->sampleRate,
               static_cast<std::uint32_t>(info.maxInputChannels)};
    blocks_.emplace(format_.channelsPerFrame, format_.sampleRate);
    return audioSuccess;
}

AudioStatus PortAudioStream::start() {
    return statusOf(Pa_StartStream(stream_));
}

bool PortAudioStream::waitForBlock() const {
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_nsec += 250'000'000;
    deadline.tv_sec += deadline.tv_nsec / 1'000'000'000;
    deadline.tv_nsec %= 1'000'000'000;
    return sem_clockwait(&arrived_, CLOCK_MONOTONIC, &deadline) == 0;
}

bool PortAudioStream::isActive() const {
    return Pa_IsStreamActive(stream_) == 1;
}

int PortAudioStream::deliver(const void* input, void*, unsigned long frames,
                             const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags, void* stream) {
    auto& self = *static_cast<PortAudioStream*>(stream);
    if (input != nullptr &&
        self.blocks_->push(
            {.channels = {static_cast<const float* const*>(input), self.format_.channelsPerFrame},
             .frameCount = frames,
             .sampleRate = self.format_.sampleRate})) {
        sem_post(&self.arrived_);
    }
    return paContinue;
}

}  // namespace tessivo
