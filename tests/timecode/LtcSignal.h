#pragma once

#include "ltc/Timecode.h"
#include "support/Random.h"
#include "timecode/LtcBiphaseDecoder.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessivo {

using test::Random;

struct LtcSignal {
    std::vector<LtcBiphaseDecoder::Frame> frames;
    std::vector<float> samples;  ///< from -1 to 1, up to the edge that ends the last frame
};

/// Consecutive frames at a rate that `ltc::parseFrameRate` knows, as our encoder makes them; what
/// it makes is what libltc reads.
LtcSignal encodeLtc(std::string_view rate, std::size_t frameCount, int sampleRate = 48'000,
                    ltc::Timecode start = {1, 0, 59, 12});

/// A frame that a decoder found in samples, and the one that ended it.
struct FoundFrame {
    LtcBiphaseDecoder::Frame frame;
    bool dropFrame;
    double end;
};
std::vector<FoundFrame> decodeWithLibltc(std::vector<float> samples, int samplesPerFrame);

/// Every frame found in `samples`, fed in one piece.
std::vector<LtcBiphaseDecoder::Frame> decodeAll(std::span<const float> samples);

/// Bits, oldest first, as samples of ±0.5 with 20 of them per bit, after an edge that seeds the
/// width of a cell with just that, and followed by the edge that ends the last bit.
std::vector<float> signalOfBits(const std::string& bits);

/// The 80 bits of a frame at 25 frames per second, oldest first, as '0' and '1'. Values beyond a
/// field's digits are the caller's to avoid.
std::string bitsOfFrame(const LtcBiphaseDecoder::Frame& frame);

/// "HH:MM:SS:FF " of each, for messages.
std::string text(std::span<const LtcBiphaseDecoder::Frame> frames);

}  // namespace tessivo
