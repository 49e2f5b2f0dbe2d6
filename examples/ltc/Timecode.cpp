#include "ltc/Timecode.h"

#include <array>
#include <cstdio>
#include <utility>

namespace tessivo::ltc {

namespace {

// Numbers 0 and 1 don't exist in the first second of a minute, but for each tenth minute (SMPTE ST
// 12-1, drop-frame compensation).
bool isDropped(const Timecode& timecode, const FrameRate& rate) {
    return rate.dropFrame && timecode.frames < 2 && timecode.seconds == 0 &&
           timecode.minutes % 10 != 0;
}

std::optional<int> twoDigits(std::string_view text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (!isDigit(text[0]) || !isDigit(text[1])) {
        return std::nullopt;
    }
    return (text[0] - '0') * 10 + (text[1] - '0');
}

}  // namespace

std::optional<FrameRate> parseFrameRate(std::string_view text) {
    using Named = std::pair<std::string_view, FrameRate>;
    static constexpr std::array<Named, 5> rates{{
        {"24", {24, 24, 1, false}},
        {"25", {25, 25, 1, false}},
        {"29.97df", {30, 30'000, 1'001, true}},
        {"29.97ndf", {30, 30'000, 1'001, false}},
        {"30", {30, 30, 1, false}},
    }};
    for (const auto& [name, rate] : rates) {
        if (name == text) {
            return rate;
        }
    }
    return std::nullopt;
}

std::optional<Timecode> parseTimecode(std::string_view text, const FrameRate& rate) {
    if (text.size() != 11 || text[2] != ':' || text[5] != ':' || text[8] != ':') {
        return std::nullopt;
    }
    const auto hours = twoDigits(text.substr(0, 2));
    const auto minutes = twoDigits(text.substr(3, 2));
    const auto seconds = twoDigits(text.substr(6, 2));
    const auto frames = twoDigits(text.substr(9, 2));
    if (!hours || !minutes || !seconds || !frames) {
        return std::nullopt;
    }
    const Timecode timecode{*hours, *minutes, *seconds, *frames};
    if (*hours > 23 || *minutes > 59 || *seconds > 59 || *frames >= rate.counted ||
        isDropped(timecode, rate)) {
        return std::nullopt;
    }
    return timecode;
}

std::string toText(const Timecode& timecode) {
    std::array<char, 48> text{};
    std::snprintf(text.data(), text.size(), "%02d:%02d:%02d:%02d", timecode.hours, timecode.minutes,
                  timecode.seconds, timecode.frames);
    return text.data();
}

Timecode next(const Timecode& timecode, const FrameRate& rate) {
    Timecode result = timecode;
    if (++result.frames == rate.counted) {
        result.frames = 0;
        if (++result.seconds == 60) {
            result.seconds = 0;
            if (++result.minutes == 60) {
                result.minutes = 0;
                result.hours = (result.hours + 1) % 24;
            }
        }
    }
    if (isDropped(result, rate)) {
        result.frames = 2;
    }
    return result;
}

}  // namespace tessivo::ltc
