#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

// What the operator types into a song's fields, and what is kept of it. The length is shown again
// by `minutesAndSeconds`.

/// The start timecode HH:MM:SS:FF that the text's ASCII digits spell, aligned to the frames:
/// missing leading digits are zeros, and only the last eight count. Fields aren't checked against
/// their usual ranges. None when there is no digit.
std::optional<std::string> normalizeLtcInput(std::string_view text);

/// The length in seconds: m:s, or a number of seconds. Stray colons and signs are accepted, and
/// seconds beyond 59. None for any other text and outside the signed 64-bit range.
std::optional<std::int64_t> parseDurationInput(std::string_view text);

}  // namespace tessivo
