#include "platform/audio/DeviceCapture.h"

#include "platform/audio/CaptureReport.h"
#include "platform/audio/PortAudioSession.h"
#include "platform/audio/PortAudioStream.h"
#ifdef __linux__
#include "platform/audio/PulseSourceWatch.h"
#endif

#include <fcntl.h>
#include <portaudio.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
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

// False when nobody reads any more, or this is to end.
bool write(std::array<iovec, 2> parts) {
    while (parts[0].iov_len + parts[1].iov_len > 0) {
        const ssize_t written = writev(STDOUT_FILENO, parts.data(), 2);
        if (written < 0 && (errno != EINTR || isToEnd != 0)) {
            return false;
        }
        std::size_t rest = written > 0 ? static_cast<std::size_t>(written) : 0;
        for (iovec& part : parts) {
            const std::size_t taken = std::min(rest, part.iov_len);
            part.iov_base = static_cast<char*>(part.iov_base) + taken;
            part.iov_len -= taken;
            rest -= taken;
        }
    }
    return true;
}

void report(CaptureReport report) {
    write({{{&report, sizeof report}, {}}});
}

bool failed(AudioStep step, AudioStatus status) {
    report({.step = step, .status = status});
    return false;
}

// A block lies in one piece in the queue.
bool writeBlock(const AudioBlock& block) {
    CapturedBlockHead head{block.frameCount, block.lostBefore};
    auto* samples = const_cast<float*>(block.channels.front());
    return write({{{&head, sizeof head},
                   {samples, block.channels.size() * block.frameCount * sizeof(float)}}});
}

// Until it is to end, or the device ends by itself.
void passOn(PortAudioStream& stream) {
#ifdef __linux__
    PulseSourceWatch watch;
    const auto isSourceGone = [&] { return watch.isSourceGone(); };
#else
    const auto isSourceGone = [] { return false; };
#endif
    while (isToEnd == 0 && !isSourceGone()) {
        if (!stream.waitForBlock()) {
            if (!stream.isActive()) {
                return;
            }
            continue;
        }
        if (const auto block = stream.blocks().front()) {
            if (!writeBlock(*block)) {
                return;
            }
            stream.blocks().pop();
        }
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
