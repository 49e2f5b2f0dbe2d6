#pragma once

#include "timecode/LtcBiphaseDecoder.h"

#include <array>
#include <cstdint>
#include <optional>

namespace tessivo {

/// Which numbers timecode counts in: how many a second has, and whether 00 and 01 are left out at
/// the beginning of nine of ten minutes (SMPTE ST 12-1, drop-frame).
struct TimecodeCounting {
    std::int64_t framesPerSecond = 25;
    bool dropFrame = false;

    friend bool operator==(const TimecodeCounting&, const TimecodeCounting&) = default;
};

/// How many frames a second of timecode may count.
constexpr std::array<std::int64_t, 3> framesPerSecondInUse = {24, 25, 30};

/// How many frames after `earlier` the frame `later` is due, from 0 to a day less one frame.
/// Nothing when this counting has no such numbers.
std::optional<std::int64_t> framesBetween(const LtcBiphaseDecoder::Frame& earlier,
                                          const LtcBiphaseDecoder::Frame& later,
                                          const TimecodeCounting& counting);

/// A frame, when it ended, and what the decoder knows of it.
struct HeardFrame {
    LtcBiphaseDecoder::Frame frame;
    LtcBiphaseDecoder::Circumstances circumstances;
    double end = 0.0;         ///< in seconds of audio
    bool isFiltered = false;  ///< read behind a high-pass, and not without it
};

/// Tells frames that can be trusted from those that noise, music or a bad line make. Nothing in a
/// frame protects it, but its neighbours do: a frame counts when it is the one after the frame just
/// before it, 80 bits on and one frame on, or when it is where the confirmed timecode has to be by
/// now, at most a second after it was confirmed last. So each start and each jump costs its first
/// frame; a drop-out shorter than that second costs nothing beyond itself.
class TimecodeLock {
public:
    /// Whether the next frame counts.
    bool confirms(const HeardFrame& heard);

private:
    bool agrees(const HeardFrame& heard) const;

    std::optional<HeardFrame> last_;
    std::optional<HeardFrame> confirmed_;
    double frameLength_ = 0.0;  ///< of the confirmed timecode, in seconds
};

}  // namespace tessivo
