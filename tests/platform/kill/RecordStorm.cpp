// Changes and stores a library without end: record_storm FOLDER. After each operation that was
// stored, writes its number to the standard output, as 8 bytes.

#include "StormOperations.h"
#include "model/ShowJson.h"
#include "platform/qt/FilePreferencesStore.h"

#include <unistd.h>

#include <cstdint>
#include <optional>

using namespace tessivo;

int main(int count, char** arguments) {
    if (count != 2) {
        return 1;
    }
    FilePreferencesStore store(arguments[1]);
    if (!store.isWritable()) {
        return 2;
    }
    PersistedData data;
    if (const auto bytes = store.data(test::stormKey)) {
        auto kept = decodePersistedData(*bytes);
        if (!kept) {
            return 3;
        }
        data = std::move(*kept);
    }
    for (;;) {
        const std::int64_t number = ++data.activeSongIndex;
        test::applyStormOperation(data.shows, number);
        store.setData(test::stormKey, encodePersistedJson(data.shows, data.activeShowId, number));
        if (::write(STDOUT_FILENO, &number, sizeof number) != sizeof number) {
            return 4;
        }
    }
}
