#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

/// A universally unique identifier (RFC 4122), the identity of shows, songs and guests.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A new version 4 (random) identifier from the system's entropy source.
    static Uuid random();

    /// Reads the 36-character hyphenated form, 8-4-4-4-12 hexadecimal digits in either case;
    /// nothing for any other text.
    static std::optional<Uuid> fromText(std::string_view text);

    /// The hyphenated form with upper-case digits.
    std::string toText() const;

    friend auto operator<=>(const Uuid&, const Uuid&) = default;
};

}  // namespace tessivo

template <>
struct std::hash<tessivo::Uuid> {
    std::size_t operator()(const tessivo::Uuid& uuid) const noexcept;
};
