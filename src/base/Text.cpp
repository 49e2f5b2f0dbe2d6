#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace tessivo {
namespace {

constexpr std::array<std::string_view, 18> spaces = {
    "\t",     " ",      "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004",
    "\u2005", "\u2006", "\u2007", "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"};
constexpr std::array<std::string_view, 7> lineBreaks = {"\n",     "\v",     "\f",    "\r",
                                                        "\u0085", "\u2028", "\u2029"};

/// The length of the first of `characters` that `text` starts with, or 0.
template <std::size_t count>
std::size_t lengthAtStart(std::string_view text,
                          const std::array<std::string_view, count>& characters) {
    const auto found = std::ranges::find_if(
        characters, [&](std::string_view character) { return text.starts_with(character); });
    return found == characters.end() ? 0 : found->size();
}

template <std::size_t count>
std::size_t lengthAtEnd(std::string_view text,
                        const std::array<std::string_view, count>& characters) {
    const auto found = std::ranges::find_if(
        characters, [&](std::string_view character) { return text.ends_with(character); });
    return found == characters.end() ? 0 : found->size();
}

}  // namespace

std::string_view trimSpaces(std::string_view text) {
    while (const std::size_t length = lengthAtStart(text, spaces)) {
        text.remove_prefix(length);
    }
    while (const std::size_t length = lengthAtEnd(text, spaces)) {
        text.remove_suffix(length);
    }
    return text;
}

std::string_view trimSpacesAndLineBreaks(std::string_view text) {
    while (const std::size_t length =
               std::max(lengthAtStart(text, spaces), lengthAtStart(text, lineBreaks))) {
        text.remove_prefix(length);
    }
    while (const std::size_t length =
               std::max(lengthAtEnd(text, spaces), lengthAtEnd(text, lineBreaks))) {
        text.remove_suffix(length);
    }
    return text;
}

std::optional<std::int64_t> readInteger(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;  // from_chars would take the second sign
        }
    }
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return value;
}

std::vector<std::string_view> split(std::string_view text, std::string_view separators) {
    assert(!separators.empty());
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

std::vector<std::int64_t> integersBetween(std::string_view text, std::string_view separators) {
    std::vector<std::int64_t> numbers;
    for (const std::string_view piece : split(text, separators)) {
        if (const auto number = readInteger(piece)) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

}  // namespace tessivo
