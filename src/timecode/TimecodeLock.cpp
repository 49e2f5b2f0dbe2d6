#include "timecode/TimecodeLock.h"

#include <algorithm>
#include <cmath>

namespace tessivo {
namespace {

using Frame = LtcBiphaseDecoder::Frame;

constexpr double memorySeconds = 1.0;
/// Only the frame that is due, whatever the playback's speed has done meanwhile.
constexpr double toleratedFrames = 0.5;

std::int64_t numberOf(const Frame& frame, const TimecodeCounting& counting) {
    const std::int64_t minutes = frame.hours * 60 + frame.minutes;
    const std::int64_t counted =
        (minutes * 60 + frame.seconds) * counting.framesPerSecond + frame.frames;
    return counting.dropFrame ? counted - 2 * (minutes - minutes / 10) : counted;
}

/// Whether `fits` holds for the frames from `earlier` to `later` in any counting that they may be
/// of: which one it is shows only once a second has come to its end.
template <typename Fits>
bool anyDistance(const HeardFrame& earlier, const HeardFrame& later, Fits&& fits) {
    const bool dropFrame = later.circumstances.dropFrame;
    return dropFrame == earlier.circumstances.dropFrame &&
           std::ranges::any_of(framesPerSecondInUse, [&](std::int64_t framesPerSecond) {
               const auto distance =
                   framesBetween(earlier.frame, later.frame, {framesPerSecond, dropFrame});
               return distance && fits(*distance);
           });
}

}  // namespace

std::optional<std::int64_t> framesBetween(const Frame& earlier, const Frame& later,
                                          const TimecodeCounting& counting) {
    if (std::max(earlier.frames, later.frames) >= counting.framesPerSecond) {
        return std::nullopt;
    }
    const std::int64_t day = numberOf({.hours = 24}, counting);
    return (numberOf(later, counting) - numberOf(earlier, counting) + day) % day;
}

bool TimecodeLock::confirms(const HeardFrame& heard) {
    const bool isNeighbour =
        last_ && heard.circumstances.followsClosely &&
        anyDistance(*last_, heard, [](std::int64_t distance) { return distance == 1; });
    const bool counts = isNeighbour || agrees(heard);
    if (isNeighbour) {
        frameLength_ = heard.end - last_->end;
    }
    if (counts) {
        confirmed_ = heard;
    }
    last_ = heard;
    return counts;
}

bool TimecodeLock::agrees(const HeardFrame& heard) const {
    if (!confirmed_ || heard.end - confirmed_->end > memorySeconds) {
        return false;
    }
    const double due = (heard.end - confirmed_->end) / frameLength_;
    return anyDistance(*confirmed_, heard, [&](std::int64_t distance) {
        return std::abs(static_cast<double>(distance) - due) <= toleratedFrames;
    });
}

}  // namespace tessivo
