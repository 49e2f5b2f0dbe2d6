// What the main program runs to have nothing to do with drivers and sound servers itself. Without
// arguments it prints the audio inputs that this computer has now. With the host system, the name
// and the ordinal of one it captures that until it is asked to end. Not meant to be run by hand.
#include "platform/audio/DeviceCapture.h"
#include "platform/audio/InputDeviceList.h"
#include "platform/audio/PortAudioSession.h"

#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

bool listDevices() {
    const tessivo::PortAudioSession session;
    if (session.status() != tessivo::audioSuccess) {
        return false;
    }
    const std::string text = tessivo::encodeInputDevices(session.inputDevices());
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return isWritten && std::fflush(stdout) == 0;
}

}  // namespace

int main(int argc, char* argv[]) {
#ifdef __linux__
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
    if (argc == 4) {
        const auto ordinal = static_cast<std::uint32_t>(std::strtoul(argv[3], nullptr, 10));
        return tessivo::captureDevice({argv[1], argv[2], ordinal}) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    return listDevices() ? EXIT_SUCCESS : EXIT_FAILURE;
}
