#include "platform/audio/DeviceCapture.h"

#include "platform/audio/CaptureReport.h"
#include "platform/audio/PortAudioSession.h"
#include "platform/audio/PortAudioStream.h"
#ifdef __linux__
#include "platform/audio/PulseSourceWatch.h"
#endif

#include <fcntl.h>
#include <portaudio.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>

namespace tessivo {
namespace {

volatile std::sig_atomic_t isToEnd = 0;

// A device that doesn't close within a second is left to the system.
void askToEnd(int) {
    isToEnd = 1;
    alarm(1);
}

// From here on a request to end closes the device first: JACK's other clients would hear us go.
void endInOrder() {
    struct sigaction action {};
    action.sa_handler = askToEnd;  // interrupts what waits
    sigaction(SIGTERM, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

void report(CaptureReport report) {
    // When nobody reads any more, the blocks won't be read either.
    [[maybe_unused]] const ssize_t written = write(STDOUT_FILENO, &report, sizeof report);
}

bool failed(AudioStep step, AudioStatus status) {
    report({.step = step, .status = status});
    return false;
}

// Until it is to end, or the device ends by itself.
void passOn(PortAudioStream& stream) {
#ifdef __linux__
    PulseSourceWatch watch;
    const auto isSourceGone = [&] { return watch.isSourceGone(); };
#else
    const auto isSourceGone = [] { return false; };
#endif
    while (isToEnd == 0 && !isSourceGone() && stream.passOn(STDOUT_FILENO) && stream.isActive()) {
    }
}

}  // namespace

bool captureDevice(const InputDeviceKey& device) {
    report({.step = AudioStep::createUnit});
    const PortAudioSession session;
    if (session.status() != audioSuccess) {
        return failed(AudioStep::createUnit, session.status());
    }
    if (Pa_GetHostApiCount() <= 0) {
        return failed(AudioStep::findSystem, paHostApiNotFound);
    }
    const InputDeviceList present = session.inputDevices();
    const auto found = std::ranges::find(present, device, &ListedInputDevice::key);
    if (found == present.end()) {
        return failed(AudioStep::selectDevice, paInvalidDevice);
    }
    report({.step = AudioStep::readFormat});
    PortAudioStream stream;
    if (const AudioStatus status = stream.open(found->index); status != audioSuccess) {
        return failed(AudioStep::readFormat, status);
    }
    report({.step = AudioStep::start});
    if (const AudioStatus status = stream.start(); status != audioSuccess) {
        return failed(AudioStep::start, status);
    }
#ifdef F_SETPIPE_SZ
    fcntl(STDOUT_FILENO, F_SETPIPE_SZ, 1 << 20);  // a few blocks of many channels, else half of one
#endif
    endInOrder();
    report({.step = AudioStep::start, .isOpen = true, .format = stream.format()});
    passOn(stream);
    if (!stream.isActive()) {
        // When the JACK server goes away, PortAudio waits ten minutes for a thread of it in each
        // function that gives the stream back.
        std::_Exit(EXIT_FAILURE);
    }
    return true;
}

}  // namespace tessivo
