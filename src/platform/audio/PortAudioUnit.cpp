#include "platform/audio/PortAudioUnit.h"

#include "platform/audio/PortAudioInput.h"
#include "platform/audio/PortAudioSession.h"

#include <algorithm>
#include <cstring>
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

PortAudioUnit::PortAudioUnit(PortAudioInput& system, std::unique_ptr<PortAudioSession> session)
    : system_(system), session_(std::move(session)) {
    system_.unit_ = this;
}

PortAudioUnit::~PortAudioUnit() {
    uninitialize();
    if (system_.unit_ == this) {
        system_.unit_ = nullptr;
    }
}

AudioStatus PortAudioUnit::setCurrentDevice(AudioDeviceId device) {
    const auto key = system_.keyOf(device);
    const InputDeviceList present = listInputDevices();
    const auto found =
        std::find_if(present.begin(), present.end(),
                     [&](const ListedInputDevice& other) { return other.key == key; });
    if (found == present.end()) {
        return paInvalidDevice;
    }
    device_ = device;
    index_ = found->index;
    return audioSuccess;
}

AudioStatus PortAudioUnit::readDeviceFormat(AudioStreamFormat& format) {
    const PaDeviceInfo* info = Pa_GetDeviceInfo(index_);
    if (info == nullptr) {
        return paInvalidDevice;
    }
    uninitialize();
    if (const AudioStatus status = open(index_, *info); status != audioSuccess) {
        return status;
    }
    format = deviceFormat_;
    return audioSuccess;
}

AudioStatus PortAudioUnit::open(PaDeviceIndex index, const PaDeviceInfo& info) {
    const PaStreamParameters input{index, info.maxInputChannels, paFloat32 | paNonInterleaved,
                                   latencyFor(info), nullptr};
    const PaError error = Pa_OpenStream(&stream_, &input, nullptr, info.defaultSampleRate,
                                        paFramesPerBufferUnspecified, paClipOff | paDitherOff,
                                        &PortAudioUnit::streamCallback, this);
    if (error != paNoError) {
        stream_ = nullptr;
        return statusOf(error);
    }
    // The rate may differ a little from the one asked for. The channels can't: should the device
    // be opened with more of them, PortAudio hands over only what was asked for.
    deviceFormat_ = {Pa_GetStreamInfo(stream_)->sampleRate,
                     static_cast<std::uint32_t>(info.maxInputChannels)};
    return audioSuccess;
}

AudioStatus PortAudioUnit::setClientFormat(const AudioStreamFormat& format) {
    if (format.sampleRate != deviceFormat_.sampleRate) {
        return paInvalidSampleRate;
    }
    if (format.channelsPerFrame == 0 || format.channelsPerFrame > deviceFormat_.channelsPerFrame) {
        return paInvalidChannelCount;
    }
    clientFormat_ = format;
    return audioSuccess;
}

AudioStatus PortAudioUnit::setInputCallback(AudioInputCallback callback, void* reference) {
    if (callback == nullptr) {
        return paNullCallback;
    }
    callback_ = callback;
    reference_ = reference;
    return audioSuccess;
}

AudioStatus PortAudioUnit::initialize() {
    if (stream_ == nullptr) {
        return paBadStreamPtr;
    }
    if (clientFormat_ == AudioStreamFormat{}) {
        return paInvalidChannelCount;
    }
    return callback_ == nullptr ? AudioStatus{paNullCallback} : audioSuccess;
}

AudioStatus PortAudioUnit::start() {
    if (const AudioStatus status = initialize(); status != audioSuccess) {
        return status;
    }
    return statusOf(Pa_StartStream(stream_));
}

// Aborted rather than stopped: ALSA's stop waits for a block, which a dead device never delivers,
// and there is nothing to play out. Either way PortAudio joins its thread, also one that has ended
// by itself because the device went away.
AudioStatus PortAudioUnit::stop() {
    if (stream_ == nullptr || Pa_IsStreamStopped(stream_) == 1) {
        return audioSuccess;
    }
    if (isLostJackStream()) {
        stream_ = nullptr;
        static_cast<void>(session_.release());
        return audioSuccess;
    }
    return statusOf(Pa_AbortStream(stream_));
}

// When the JACK server goes away, the thread that called us ends with it, but PortAudio still waits
// ten minutes for that thread in each of its functions that give the stream back. The stream and
// the session are left to the process then: other devices can be captured as before, and JACK again
// after the next start of the program.
bool PortAudioUnit::isLostJackStream() const {
    const PaDeviceInfo* info = Pa_GetDeviceInfo(index_);
    return info != nullptr && Pa_GetHostApiInfo(info->hostApi)->type == paJACK &&
           Pa_IsStreamActive(stream_) == 0;
}

AudioStatus PortAudioUnit::uninitialize() {
    if (stream_ == nullptr) {
        return audioSuccess;
    }
    stop();
    clientFormat_ = {};
    PaStream* stream = std::exchange(stream_, nullptr);
    return stream != nullptr ? statusOf(Pa_CloseStream(stream)) : audioSuccess;
}

bool PortAudioUnit::isDelivering() const {
    return stream_ != nullptr && Pa_IsStreamActive(stream_) == 1;
}

int PortAudioUnit::streamCallback(const void* input, void*, unsigned long frames,
                                  const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags,
                                  void* unit) {
    if (input != nullptr) {
        static_cast<PortAudioUnit*>(unit)->deliver(static_cast<const float* const*>(input), frames);
    }
    return paContinue;
}

void PortAudioUnit::deliver(const float* const* channels, unsigned long frames) {
    channels_ = channels;
    for (sliceStart_ = 0; sliceStart_ < frames; sliceStart_ += sliceFrames_) {
        sliceFrames_ = static_cast<std::uint32_t>(
            std::min<unsigned long>(frames - sliceStart_, maximumFramesPerSlice));
        callback_(reference_, sliceFrames_);
    }
    channels_ = nullptr;
}

AudioStatus PortAudioUnit::render(std::uint32_t frames, std::span<const AudioBuffer> buffers) {
    if (channels_ == nullptr || frames > sliceFrames_ ||
        buffers.size() > clientFormat_.channelsPerFrame) {
        return paBadBufferPtr;
    }
    const std::size_t bytes = frames * sizeof(float);
    for (std::size_t channel = 0; channel < buffers.size(); ++channel) {
        const AudioBuffer& buffer = buffers[channel];
        if (buffer.data == nullptr || buffer.byteSize < bytes) {
            return paBadBufferPtr;
        }
        std::memcpy(buffer.data, channels_[channel] + sliceStart_, bytes);
    }
    return audioSuccess;
}

}  // namespace tessivo
