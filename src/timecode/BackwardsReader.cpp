#include "timecode/BackwardsReader.h"

#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/TimecodeLock.h"

#include <algorithm>
#include <cstddef>

namespace tessivo {
namespace {

/// Twelve frames at the slowest rate: enough to find the width of a cell and two frames that
/// confirm each other, also at half the usual speed.
constexpr double stretchSeconds = 0.5;

}  // namespace

bool BackwardsReader::take(std::span<const float> samples, double sampleRate) {
    heard_.insert(heard_.end(), samples.begin(), samples.end());
    const auto stretch = static_cast<std::size_t>(stretchSeconds * sampleRate);
    if (heard_.size() < stretch) {
        return false;
    }
    std::ranges::reverse(heard_);
    LtcBiphaseDecoder decoder(clock_);
    TimecodeLock lock;
    bool isTimecode = false;
    std::span<const float> rest = heard_;
    while (const auto frame = decoder.takeUntilFrame(rest)) {
        const auto taken = static_cast<double>(heard_.size() - rest.size());
        isTimecode |= lock.confirms({*frame, decoder.lastFrame(), taken / sampleRate});
    }
    heard_.clear();
    return isTimecode;
}

}  // namespace tessivo
