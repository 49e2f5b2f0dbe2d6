#pragma once

#include "timecode/LtcBiphaseDecoder.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tessivo {

/// What libltc, as an independent encoder, is asked for.
struct LtcSignalRequest {
    double framesPerSecond = 25.0;
    bool dropFrame = false;
    double sampleRate = 48'000.0;
    double speed = 1.0;
    float gain = 1.0F;  ///< factor on a signal of half the full scale; negative inverts it
    int frameCount = 20;
    LtcBiphaseDecoder::Frame start{.hours = 1, .minutes = 0, .seconds = 59, .frames = 12};
};

struct LtcSignal {
    std::vector<LtcBiphaseDecoder::Frame> frames;
    /// The frames, and one more of which only the beginning counts: its first edge ends the last.
    std::vector<float> samples;
};

LtcSignal encodeWithLibltc(const LtcSignalRequest& request);

/// A frame that libltc found in the samples, and the one that ended it.
struct LibltcFrame {
    LtcBiphaseDecoder::Frame frame;
    bool dropFrame;
    double end;
};
std::vector<LibltcFrame> decodeWithLibltc(std::vector<float> samples, int samplesPerFrame);

/// Every frame found in `samples`, fed in one piece.
std::vector<LtcBiphaseDecoder::Frame> decodeAll(std::span<const float> samples);

/// Appends samples of ±0.5 that hold each level for so many samples, and then change it.
void appendIntervals(std::vector<float>& samples, std::span<const int> intervals);

/// The distances between edges that these bits, oldest first, have at `cell` samples per bit.
std::vector<int> intervalsOfBits(const std::string& bits, int cell);

/// The 80 bits of a frame with these values in its fields, oldest first, as '0' and '1'. Values
/// beyond a field's digits are the caller's to avoid.
std::string bitsOfFrame(const LtcBiphaseDecoder::Frame& frame);

/// "HH:MM:SS:FF", for messages.
std::string text(const LtcBiphaseDecoder::Frame& frame);
std::string text(std::span<const LtcBiphaseDecoder::Frame> frames);

/// Small and the same everywhere (xorshift64*), so that tests that draw numbers can be repeated.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed * 2 + 1) {}

    std::uint64_t next() {
        state_ ^= state_ >> 12;
        state_ ^= state_ << 25;
        state_ ^= state_ >> 27;
        return state_ * 0x2545F4914F6CDD1DU;
    }
    /// From 0 to `bound` - 1.
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() >> 33) % bound; }
    /// From 0 (included) to 1.
    float unit() { return static_cast<float>(next() >> 40) / 16'777'216.0F; }
    /// Mean 0, variance 1, from -6 to 6: the sum of twelve even draws, exact in any arithmetic.
    float gaussian() {
        float sum = -6.0F;
        for (int i = 0; i < 12; ++i) {
            sum += unit();
        }
        return sum;
    }

private:
    std::uint64_t state_;
};

}  // namespace tessivo
