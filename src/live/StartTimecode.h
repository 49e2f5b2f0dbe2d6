#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tessivo {

/// Reads a start timecode as a time of day in frames: ((hours × 3600 + minutes × 60) + seconds) ×
/// fps + frames. The text is split at ":", empty and unreadable pieces are dropped, and exactly
/// four integers (an optional sign, then digits) must remain. Fields aren't checked against their
/// usual ranges. None when the text is no timecode or the result exceeds a signed 64-bit integer.
std::optional<std::int64_t> timecodeToFrames(std::string_view text, std::int64_t fps);

/// The same, with ";" read as ":", which is how drop-frame timecode is written.
std::optional<std::int64_t> anyTimecodeToFrames(std::string_view text, std::int64_t fps);

}  // namespace tessivo
