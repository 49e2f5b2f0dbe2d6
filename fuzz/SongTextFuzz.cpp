#include "live/Setlist.h"
#include "live/SongText.h"
#include "live/StartTimecode.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

using namespace tessivo;

/// Any text typed into a song's fields: what is kept is read back by the live engine, and typing
/// what is then shown keeps the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto timecode = normalizeLtcInput(text)) {
        if (timecode->size() != 11 || normalizeLtcInput(*timecode) != timecode ||
            !timecodeToFrames(*timecode, 25)) {
            std::abort();
        }
    }
    if (const auto seconds = parseDurationInput(text)) {
        if (parseDurationInput(minutesAndSeconds(*seconds)) != seconds) {
            std::abort();
        }
    }
    return 0;
}
