#pragma once

#include <cstdint>
#include <optional>

namespace tessivo {

/// value × factor + addend; none when there is no value or the result leaves the signed 64-bit
/// range.
inline std::optional<std::int64_t> multiplyAdd(std::optional<std::int64_t> value,
                                               std::int64_t factor, std::int64_t addend) {
    std::int64_t result = 0;
    if (!value || __builtin_mul_overflow(*value, factor, &result) ||
        __builtin_add_overflow(result, addend, &result)) {
        return std::nullopt;
    }
    return result;
}

}  // namespace tessivo
