#include "Fuzz.h"
#include "live/Setlist.h"
#include "live/ShowClock.h"
#include "live/SongText.h"
#include "live/StartTimecode.h"

#include <string>

using namespace tessivo;

/// Any text typed into a song's fields, or stored there by somebody else.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(asText(data, size));
    // What is kept is read back by the live engine, and typing what is then shown keeps the same.
    if (const auto timecode = normalizeLtcInput(text)) {
        require(timecode->size() == 11 && normalizeLtcInput(*timecode) == timecode);
        require(timecodeToFrames(*timecode, 25).has_value());
    }
    if (const auto seconds = parseDurationInput(text)) {
        require(parseDurationInput(minutesAndSeconds(*seconds)) == seconds);
    }
    if (const auto seconds = parseTimeOfDay(text)) {
        require(*seconds >= 0 && *seconds < secondsPerDay);
        require(parseTimeOfDay(timeOfDayText(*seconds)) == seconds);
    }
    // What a start means doesn't depend on stray colons, and frames are counted after the rest.
    const auto frames = timecodeToFrames(text, 25);
    require(timecodeToFrames("::" + text + ":", 25) == frames);
    require(timecodeToFrames(text + ":x", 25) == frames);
    require(!frames || timecodeToFrames("0:0:0:" + std::to_string(*frames), 30) == frames);
    return 0;
}
