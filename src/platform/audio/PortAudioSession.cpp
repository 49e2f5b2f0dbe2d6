#include "platform/audio/PortAudioSession.h"

#include <portaudio.h>

#ifdef __linux__
#include <alsa/error.h>
#include <dlfcn.h>
#include <pa_linux_alsa.h>

#include <cstdlib>
#endif

namespace tessivo {
namespace {

#ifdef __linux__
// ALSA periods in one buffer. PortAudio makes the periods, and with them our blocks, as long as the
// suggested latency divided by this.
constexpr int periodsPerBuffer = 8;

void ignoreAlsaMessage(const char*, int, const char*, int, const char*, ...) {}
void ignoreJackMessage(const char*) {}

void silenceJack(const char* setterName) {
    using MessageFunction = void (*)(const char*);
    // libjack comes with PortAudio or not at all, so it is looked up instead of linked to.
    const auto setter =
        reinterpret_cast<void (*)(MessageFunction)>(dlsym(RTLD_DEFAULT, setterName));
    if (setter != nullptr) {
        setter(ignoreJackMessage);
    }
}

void prepareHostSystems() {
    setenv("JACK_NO_START_SERVER", "1", 0);
    snd_lib_error_set_handler(ignoreAlsaMessage);
    silenceJack("jack_set_error_function");
    silenceJack("jack_set_info_function");
    PaAlsa_SetNumPeriods(periodsPerBuffer);
}
#else
void prepareHostSystems() {}
#endif

}  // namespace

PortAudioSession::PortAudioSession() {
    prepareHostSystems();
    status_ = Pa_Initialize();
}

PortAudioSession::~PortAudioSession() {
    if (status_ == audioSuccess) {
        Pa_Terminate();
    }
}

InputDeviceList PortAudioSession::inputDevices() const {
    InputDeviceList devices;
    for (PaDeviceIndex index = 0; index < Pa_GetDeviceCount(); ++index) {
        const PaDeviceInfo* info = Pa_GetDeviceInfo(index);
        if (info != nullptr && info->name != nullptr && info->maxInputChannels > 0) {
            append(devices, {{Pa_GetHostApiInfo(info->hostApi)->name, info->name, 0}, index});
        }
    }
    return devices;
}

}  // namespace tessivo
