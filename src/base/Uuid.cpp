#include "base/Uuid.h"

#include <charconv>
#include <cstring>
#include <random>

namespace tessivo {
namespace {

constexpr std::size_t textLength = 36;

/// Before the 5th, 7th, 9th and 11th octet (RFC 4122, 3).
bool isAfterHyphen(std::size_t octet) {
    return octet == 4 || octet == 6 || octet == 8 || octet == 10;
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
    const char* at = text.data();
    for (std::size_t i = 0; i < uuid.bytes.size(); ++i) {
        if (isAfterHyphen(i) && *at++ != '-') {
            return std::nullopt;
        }
        const char* const end = at + 2;
        if (std::from_chars(at, end, uuid.bytes[i], 16).ptr != end) {
            return std::nullopt;
        }
        at = end;
    }
    return uuid;
}

std::string Uuid::toText() const {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (isAfterHyphen(i)) {
            text += '-';
        }
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 0x0F];
    }
    return text;
}

}  // namespace tessivo

std::size_t std::hash<tessivo::Uuid>::operator()(const tessivo::Uuid& uuid) const noexcept {
    // The bytes are random already: any eight of them are a good hash.
    std::size_t value = 0;
    std::memcpy(&value, uuid.bytes.data(), sizeof value);
    return value;
}
