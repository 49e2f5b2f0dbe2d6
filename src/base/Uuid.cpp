#include "base/Uuid.h"

#include <uuid/uuid.h>

#include <cstring>
#include <random>

namespace tessivo {

Uuid Uuid::random() {
    // The library's own takes fifty times as long, and every new record makes one.
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
    Uuid uuid;
    const bool isUuid =
        uuid_parse_range(text.data(), text.data() + text.size(), uuid.bytes.data()) == 0;
    return isUuid ? std::optional(uuid) : std::nullopt;
}

std::string Uuid::toText() const {
    std::string text(UUID_STR_LEN - 1, '\0');
    uuid_unparse_upper(bytes.data(), text.data());
    return text;
}

}  // namespace tessivo

std::size_t std::hash<tessivo::Uuid>::operator()(const tessivo::Uuid& uuid) const noexcept {
    // The bytes are random already: any eight of them are a good hash.
    std::size_t value = 0;
    std::memcpy(&value, uuid.bytes.data(), sizeof value);
    return value;
}
