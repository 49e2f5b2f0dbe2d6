#pragma once

#include "model/Guest.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

// What the cells of a run sheet say, as crews write them.

/// The first line with anything on it, trimmed: crews put remarks on the lines below.
std::string_view firstLine(std::string_view text);

/// The names between "/", "+" and line breaks.
std::vector<std::string_view> guestNames(std::string_view text);

/// A guest for each of the names; microphone and monitor mix are left for
/// the operator to assign.
std::vector<Guest> splitGuests(std::string_view text);

/// The length in seconds on the text's first line: h:m:s, h:m:s:frames, m's, m's'' or a number of
/// seconds. Signs are kept. None for any other text, such as m:s, which could as well be h:m, and
/// when the length exceeds a signed 64-bit integer.
std::optional<std::int64_t> parseDuration(std::string_view text);

/// The timecode on the text's first line as it is written there: four integers between colons.
std::optional<std::string> parseLtc(std::string_view text);

}  // namespace tessivo
