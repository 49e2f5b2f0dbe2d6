#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo::ltc {

/// A frame rate of SMPTE ST 12-1: how many frames per second are counted, and how fast they pass.
struct FrameRate {
    int counted = 25;        ///< frame numbers per second of timecode
    int numerator = 25;      ///< frames in `denominator` seconds of real time
    int denominator = 1;     ///< seconds
    bool dropFrame = false;  ///< two frame numbers are skipped in nine of ten minutes

    friend bool operator==(const FrameRate&, const FrameRate&) = default;
};

/// From "24", "25", "29.97df", "29.97ndf" or "30"; nothing for any other text.
std::optional<FrameRate> parseFrameRate(std::string_view text);

/// A time of day, each field in its usual range.
struct Timecode {
    int hours = 0;
    int minutes = 0;
    int seconds = 0;
    int frames = 0;

    friend bool operator==(const Timecode&, const Timecode&) = default;
};

/// From HH:MM:SS:FF, two digits each; nothing for any other text, a field out of its range, or a
/// number that drop-frame counting skips.
std::optional<Timecode> parseTimecode(std::string_view text, const FrameRate& rate);

/// HH:MM:SS:FF.
std::string toText(const Timecode& timecode);

/// What is counted after `timecode`; midnight follows the last frame of the day.
Timecode next(const Timecode& timecode, const FrameRate& rate);

}  // namespace tessivo::ltc
