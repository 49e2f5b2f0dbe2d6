#pragma once

#include "platform/AudioInput.h"
#include "platform/audio/InputDeviceList.h"

namespace tessivo {

/// Keeps PortAudio initialised while it lives. The first session of a process makes PortAudio look
/// at what is plugged in; the library has no other way of looking again. What ALSA and JACK say
/// about devices that aren't there is kept off the terminal, and no JACK server is started.
class PortAudioSession {
public:
    PortAudioSession();
    ~PortAudioSession();
    PortAudioSession(const PortAudioSession&) = delete;
    PortAudioSession& operator=(const PortAudioSession&) = delete;

    /// PortAudio's code; without success the session holds nothing.
    AudioStatus status() const { return status_; }

    /// The devices with inputs, in PortAudio's order.
    InputDeviceList inputDevices() const;

private:
    AudioStatus status_;
};

}  // namespace tessivo
