#include "live/StartTimecode.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using tessivo::timecodeToFrames;

/// Any text as a start timecode: what it means doesn't depend on stray colons, and frames are
/// counted after the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const auto frames = timecodeToFrames(text, 25);
    if (timecodeToFrames("::" + text + ":", 25) != frames ||
        timecodeToFrames(text + ":x", 25) != frames) {
        std::abort();
    }
    if (frames && timecodeToFrames("0:0:0:" + std::to_string(*frames), 30) != frames) {
        std::abort();
    }
    return 0;
}
