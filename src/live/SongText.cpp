#include "live/SongText.h"

#include "base/CheckedArithmetic.h"
#include "base/Text.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace tessivo {

std::optional<std::string> normalizeLtcInput(std::string_view text) {
    constexpr std::size_t digitCount = 8;
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits),
                         [](char character) { return character >= '0' && character <= '9'; });
    if (digits.empty()) {
        return std::nullopt;
    }
    digits.insert(0, digitCount, '0');
    digits.erase(0, digits.size() - digitCount);
    for (const std::size_t colon : {6U, 4U, 2U}) {
        digits.insert(colon, 1, ':');
    }
    assert(digits.size() == std::string_view("HH:MM:SS:FF").size());
    return digits;
}

std::optional<std::int64_t> parseDurationInput(std::string_view text) {
    const std::string_view trimmed = trimSpaces(text);
    if (trimmed.find(':') == std::string_view::npos) {
        return readInteger(trimmed);
    }
    const auto numbers = integersBetween(trimmed, ":");
    return numbers.size() == 2 ? multiplyAdd(numbers[0], 60, numbers[1]) : std::nullopt;
}

}  // namespace tessivo
