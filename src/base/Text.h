#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tessivo {

/// The text without the spaces at its ends: the tab and every character of Unicode's category Zs,
/// the no-break spaces of French typography included.
std::string_view trimSpaces(std::string_view text);

/// The text without the spaces and the line breaks at its ends.
std::string_view trimSpacesAndLineBreaks(std::string_view text);

/// Reads the whole text as a decimal integer: an optional sign, then ASCII digits. None for any
/// other text and outside the signed 64-bit range.
std::optional<std::int64_t> readInteger(std::string_view text);

/// The pieces between any of the separators, without the empty ones.
std::vector<std::string_view> split(std::string_view text, std::string_view separators);

/// Those of the pieces that are integers.
std::vector<std::int64_t> integersBetween(std::string_view text, std::string_view separators);

}  // namespace tessivo
