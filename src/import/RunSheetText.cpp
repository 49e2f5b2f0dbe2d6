#include "import/RunSheetText.h"

#include "base/CheckedArithmetic.h"
#include "base/Text.h"

namespace tessivo {

std::string_view firstLine(std::string_view text) {
    const std::size_t start = text.find_first_not_of('\n');
    return trimSpaces(start == std::string_view::npos
                          ? text
                          : text.substr(start, text.find('\n', start) - start));
}

std::vector<std::string_view> guestNames(std::string_view text) {
    std::vector<std::string_view> names;
    for (const std::string_view piece : split(text, "/+\n")) {
        const std::string_view name = trimSpaces(piece);
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<Guest> splitGuests(std::string_view text) {
    std::vector<Guest> guests;
    for (const std::string_view name : guestNames(text)) {
        guests.emplace_back().name = name;
    }
    return guests;
}

std::optional<std::int64_t> parseDuration(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (line.find(':') != std::string_view::npos) {
        const auto numbers = integersBetween(line, ":");
        if (numbers.size() == 3 || numbers.size() == 4) {
            return multiplyAdd(multiplyAdd(numbers[0], 60, numbers[1]), 60, numbers[2]);
        }
    }
    if (line.find('\'') != std::string_view::npos) {
        const auto numbers = integersBetween(line, "'");
        if (numbers.size() == 2 || numbers.size() == 3) {
            return multiplyAdd(numbers[0], 60, numbers[1]);
        }
    }
    return readInteger(line);
}

std::optional<std::string> parseLtc(std::string_view text) {
    const std::string_view line = firstLine(text);
    if (split(line, ":").size() != 4 || integersBetween(line, ":").size() != 4) {
        return std::nullopt;
    }
    return std::string(line);
}

}  // namespace tessivo
