#pragma once

#include "ltc/Timecode.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessivo::ltc {

/// The 80 bits of a frame in the order of transmission (SMPTE ST 12-1, bit assignment of linear
/// timecode): binary-coded decimal digits, the drop-frame flag, the polarity correction bit (the
/// standard's number differs at 25 frames per second) and the sync word. User bits are 0.
std::bitset<80> frameBits(const Timecode& timecode, const FrameRate& rate);

/// Makes the signal of consecutive frames, biphase-mark modulated, from -1 to 1. The edges lie at
/// their exact instants, however the sample rate divides, so a long signal doesn't drift.
class LtcEncoder {
public:
    /// `sampleRate` in samples per second.
    LtcEncoder(const FrameRate& rate, int sampleRate) : rate_(rate), sampleRate_(sampleRate) {}

    /// Appends the samples of the next frame.
    void appendFrame(const Timecode& timecode, std::vector<float>& samples);
    /// Appends one more bit cell, whose first edge completes the last frame for a receiver.
    void appendClosingCell(std::vector<float>& samples);

private:
    enum class Edge { absent, present };

    void appendCell(bool bit, std::vector<float>& samples);
    void appendHalfCell(Edge atEnd, std::vector<float>& samples);
    double startOfHalfCell(std::int64_t number) const;

    FrameRate rate_;
    int sampleRate_;
    std::int64_t halfCellCount_ = 0;  // so far
    std::int64_t sampleCount_ = 0;    // so far
    float polarity_ = 1.0F;
    Edge edgeAtStart_ = Edge::absent;  // of the next half cell
};

}  // namespace tessivo::ltc
