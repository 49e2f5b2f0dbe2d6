// Prints the audio inputs that this computer has now, for the main program, which can't look again
// while it captures. Not meant to be run by hand.
#include "platform/audio/InputDeviceList.h"
#include "platform/audio/PortAudioSession.h"

#include <cstdio>

int main() {
    const tessivo::PortAudioSession session;
    if (session.status() != tessivo::audioSuccess) {
        return 1;
    }
    const std::string text = tessivo::encodeInputDevices(tessivo::listInputDevices());
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return written && std::fflush(stdout) == 0 ? 0 : 1;
}
