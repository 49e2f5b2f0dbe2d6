#include "import/RunSheetText.h"

#include "base/Text.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>

namespace tessivo {
namespace {

/// The pieces between any of the separators, without the empty ones.
std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (end > 0) {
            pieces.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

/// The first line with anything on it, trimmed: crews put remarks on the lines below.
std::string_view firstLine(std::string_view text) {
    const std::vector<std::string_view> lines = split(text, "\n");
    return trimSpaces(lines.empty() ? text : lines.front());
}

std::vector<std::int64_t> integersBetween(std::string_view separators, std::string_view text) {
    std::vector<std::int64_t> numbers;
    for (const std::string_view piece : split(text, separators)) {
        if (const auto number = readInteger(piece)) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

/// The numbers as digits in base 60; none when the result leaves the signed 64-bit range.
std::optional<std::int64_t> inBase60(std::initializer_list<std::int64_t> numbers) {
    std::int64_t total = 0;
    for (const std::int64_t number : numbers) {
        if (__builtin_mul_overflow(total, 60, &total) ||
            __builtin_add_overflow(total, number, &total)) {
            return std::nullopt;
        }
    }
    return total;
}

}  // namespace

std::vector<Guest> splitGuests(std::string_view text) {
    std::vector<Guest> guests;
    for (const std::string_view piece : split(text, "/+\n")) {
        const std::string_view name = trimSpaces(piece);
        if (!name.empty()) {
            guests.emplace_back().name = name;
        }
    }
    return guests;
}

std::optional<std::int64_t> parseDuration(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (line.find(':') != std::string_view::npos) {
        const auto numbers = integersBetween(":", line);
        if (numbers.size() == 3 || numbers.size() == 4) {
            return inBase60({numbers[0], numbers[1], numbers[2]});
        }
    }
    if (line.find('\'') != std::string_view::npos) {
        const auto numbers = integersBetween("'", line);
        if (numbers.size() == 2 || numbers.size() == 3) {
            return inBase60({numbers[0], numbers[1]});
        }
    }
    return readInteger(line);
}

std::optional<std::string> parseLtc(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (split(line, ":").size() != 4 || integersBetween(":", line).size() != 4) {
        return std::nullopt;
    }
    return std::string(line);
}

}  // namespace tessivo
