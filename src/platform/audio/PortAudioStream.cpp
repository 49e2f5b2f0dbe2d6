#include "platform/audio/PortAudioStream.h"

#include "platform/audio/CaptureReport.h"

#include <unistd.h>

#include <array>
#include <cmath>
#include <ctime>
#include <span>
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

// A second in blocks of 16 frames, the smallest that audio systems use.
std::size_t bytesPerSecond(const AudioStreamFormat& format) {
    const double headPerFrame = sizeof(CapturedBlockHead) / 16.0;
    const double samplesPerFrame = sizeof(float) * format.channelsPerFrame;
    return static_cast<std::size_t>(
        std::ceil(format.sampleRate * (headPerFrame + samplesPerFrame)));
}

bool writeAll(int descriptor, std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        if (written < 0) {
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
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
    waiting_.emplace(bytesPerSecond(format_));
    // Touched once, so that the audio thread never waits for a page of it.
    const std::array<std::byte, 4096> zeros{};
    while (waiting_->push(zeros.data(), zeros.size()) > 0) {
    }
    waiting_->reset();
    return audioSuccess;
}

AudioStatus PortAudioStream::start() {
    return statusOf(Pa_StartStream(stream_));
}

bool PortAudioStream::passOn(int descriptor) {
    timespec deadline{};
    clock_gettime(CLOCK_MONOTONIC, &deadline);
    deadline.tv_nsec += 250'000'000;
    deadline.tv_sec += deadline.tv_nsec / 1'000'000'000;
    deadline.tv_nsec %= 1'000'000'000;
    sem_clockwait(&arrived_, CLOCK_MONOTONIC, &deadline);
    std::array<std::byte, 1 << 16> part;
    while (const std::size_t size = waiting_->pop(part.data(), part.size())) {
        if (!writeAll(descriptor, {part.data(), size})) {
            return false;
        }
    }
    return true;
}

bool PortAudioStream::isActive() const {
    return Pa_IsStreamActive(stream_) == 1;
}

int PortAudioStream::deliver(const void* input, void*, unsigned long frames,
                             const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags, void* stream) {
    if (input != nullptr) {
        static_cast<PortAudioStream*>(stream)->keep(static_cast<const float* const*>(input),
                                                    frames);
    }
    return paContinue;
}

// Audio thread: no lock, no allocation, no waiting.
void PortAudioStream::keep(const float* const* channels, std::size_t frames) {
    const auto push = [this](const auto* values, std::size_t count) {
        const auto bytes = std::as_bytes(std::span(values, count));
        waiting_->push(bytes.data(), bytes.size());
    };
    const std::size_t sampleBytes = format_.channelsPerFrame * frames * sizeof(float);
    if (waiting_->write_available() < sizeof(CapturedBlockHead) + sampleBytes) {
        ++lost_.blocks;
        lost_.frames += frames;
        return;
    }
    const CapturedBlockHead head{frames, std::exchange(lost_, {})};
    push(&head, 1);
    for (std::size_t channel = 0; channel < format_.channelsPerFrame; ++channel) {
        push(channels[channel], frames);
    }
    sem_post(&arrived_);
}

}  // namespace tessivo
