#include "base/Uuid.h"

#include <cassert>
#include <cstring>
#include <random>

namespace tessivo {
namespace {

constexpr bool isHyphenPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

constexpr int hexDigitValue(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1;
}

}  // namespace

Uuid Uuid::random() {
    static std::random_device entropy;
    Uuid uuid;
    for (std::size_t i = 0; i < uuid.bytes.size(); i += sizeof(std::uint32_t)) {
        const std::uint32_t word = entropy();
        std::memcpy(&uuid.bytes[i], &word, sizeof word);
    }
    // RFC 4122, 4.4: version 4 in the high nibble of octet 6, variant 10 in the top bits of
    // octet 8.
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0F) | 0x40);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3F) | 0x80);
    return uuid;
}

std::optional<Uuid> Uuid::fromText(std::string_view text) {
    if (text.size() != textLength) {
        return std::nullopt;
    }
    Uuid uuid;
    std::size_t nibble = 0;
    for (std::size_t i = 0; i < textLength; ++i) {
        if (isHyphenPosition(i)) {
            if (text[i] != '-') {
                return std::nullopt;
            }
            continue;
        }
        const int value = hexDigitValue(text[i]);
        if (value < 0) {
            return std::nullopt;
        }
        std::uint8_t& byte = uuid.bytes[nibble / 2];
        byte = static_cast<std::uint8_t>(byte << 4 | value);
        ++nibble;
    }
    assert(nibble == 2 * uuid.bytes.size());
    return uuid;
}

std::string Uuid::toText() const {
    std::string text(textLength, '-');
    writeText(text.data());
    return text;
}

void Uuid::writeText(char* text) const {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::size_t position = 0;
    for (const std::uint8_t byte : bytes) {
        if (isHyphenPosition(position)) {
            text[position++] = '-';
        }
        text[position++] = digits[byte >> 4];
        text[position++] = digits[byte & 0x0F];
    }
    assert(position == textLength);
}

}  // namespace tessivo

std::size_t std::hash<tessivo::Uuid>::operator()(const tessivo::Uuid& uuid) const noexcept {
    // The bytes are random already: any eight of them are a good hash.
    std::size_t value = 0;
    std::memcpy(&value, uuid.bytes.data(), sizeof value);
    return value;
}
