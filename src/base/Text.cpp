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

struct LeadByte {
    std::uint8_t first, last;           ///< the lead bytes that this row is for
    std::size_t length;                 ///< of the whole sequence
    std::uint8_t secondFrom, secondTo;  ///< the range of the second byte
};
constexpr std::array<LeadByte, 8> leadBytes = {{{0xC2, 0xDF, 2, 0x80, 0xBF},
                                                {0xE0, 0xE0, 3, 0xA0, 0xBF},
                                                {0xE1, 0xEC, 3, 0x80, 0xBF},
                                                {0xED, 0xED, 3, 0x80, 0x9F},
                                                {0xEE, 0xEF, 3, 0x80, 0xBF},
                                                {0xF0, 0xF0, 4, 0x90, 0xBF},
                                                {0xF1, 0xF3, 4, 0x80, 0xBF},
                                                {0xF4, 0xF4, 4, 0x80, 0x8F}}};

/// The length of the sequence that `bytes` starts with; 0 when it is ill-formed.
std::size_t sequenceLength(std::string_view bytes) {
    const auto at = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    if (at(0) < 0x80) {
        return 1;
    }
    const auto row = std::ranges::find_if(
        leadBytes, [&](const LeadByte& lead) { return at(0) >= lead.first && at(0) <= lead.last; });
    if (row == leadBytes.end() || bytes.size() < row->length || at(1) < row->secondFrom ||
        at(1) > row->secondTo) {
        return 0;
    }
    for (std::size_t i = 2; i < row->length; ++i) {
        if ((at(i) & 0xC0) != 0x80) {
            return 0;
        }
    }
    return row->length;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = sequenceLength(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

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
