// Changes the shows without end: record_storm FOLDER. After each operation that returned, writes
// its number to the standard output, as 8 bytes.

#include "StormOperations.h"
#include "platform/posix/FilePreferencesStore.h"
#include "platform/simulated/SimulatedPlatform.h"

#include <unistd.h>

#include <cstdint>

using namespace tessivo;

int main(int count, char** arguments) {
    if (count != 2) {
        return 1;
    }
    FilePreferencesStore store(arguments[1]);
    SimulatedPlatform rest;
    AppState state(Platform{rest.time, rest.time, store, rest.files, rest.panels, rest.audio,
                            rest.updates, rest.computer, rest.stayAwake, rest.log});
    if (!state.keepsShows()) {
        return 2;
    }
    std::int64_t number = test::lastStormOperation(state.shows(), state.activeSongIndex());
    for (;;) {
        test::runStormOperation(state, ++number);
        if (::write(STDOUT_FILENO, &number, sizeof number) != sizeof number) {
            return 3;
        }
    }
}
