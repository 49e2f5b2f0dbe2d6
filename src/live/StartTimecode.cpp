#include "live/StartTimecode.h"

#include "base/CheckedArithmetic.h"
#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace tessivo {

std::optional<std::int64_t> timecodeToFrames(std::string_view text, std::int64_t fps) {
    std::array<std::int64_t, 4> fields{};
    std::size_t count = 0;
    while (!text.empty()) {
        const std::size_t colon = text.find(':');
        if (const auto value = readInteger(text.substr(0, colon))) {
            if (count == fields.size()) {
                return std::nullopt;
            }
            fields[count++] = *value;
        }
        text = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
    }
    if (count != fields.size()) {
        return std::nullopt;
    }
    const auto minutes = multiplyAdd(fields[0], 60, fields[1]);
    const auto seconds = multiplyAdd(minutes, 60, fields[2]);
    return multiplyAdd(seconds, fps, fields[3]);
}

std::optional<std::int64_t> anyTimecodeToFrames(std::string_view text, std::int64_t fps) {
    std::string colons(text);
    std::ranges::replace(colons, ';', ':');
    return timecodeToFrames(colons, fps);
}

}  // namespace tessivo
