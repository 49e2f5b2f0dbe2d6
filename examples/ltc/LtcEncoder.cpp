#include "ltc/LtcEncoder.h"

#include <algorithm>

namespace tessivo::ltc {

namespace {

constexpr int bitCount = 80;

// From 10 % to 90 % an edge takes 40 microseconds (SMPTE ST 12-1: 40 ± 10); the whole ramp is 50.
constexpr double halfRampSeconds = 25e-6;

void setDigits(std::bitset<bitCount>& bits, int value, std::size_t units, std::size_t tens) {
    for (std::size_t bit = 0; bit < 4; ++bit) {
        bits[units + bit] = (value % 10 >> bit & 1) != 0;
    }
    for (std::size_t bit = 0; bit < 3; ++bit) {
        if ((value / 10 >> bit & 1) != 0) {
            bits.set(tens + bit);
        }
    }
}

}  // namespace

std::bitset<80> frameBits(const Timecode& timecode, const FrameRate& rate) {
    std::bitset<bitCount> bits;
    setDigits(bits, timecode.frames, 0, 8);
    setDigits(bits, timecode.seconds, 16, 24);
    setDigits(bits, timecode.minutes, 32, 40);
    setDigits(bits, timecode.hours, 48, 56);
    bits[10] = rate.dropFrame;
    for (std::size_t bit = 66; bit < 78; ++bit) {
        bits.set(bit);
    }
    bits.set(79);
    // An even number of zeros makes each frame begin with the same polarity.
    bits[rate.counted == 25 ? 59 : 27] = (bitCount - bits.count()) % 2 != 0;
    return bits;
}

void LtcEncoder::appendFrame(const Timecode& timecode, std::vector<float>& samples) {
    const std::bitset<bitCount> bits = frameBits(timecode, rate_);
    for (std::size_t bit = 0; bit < bitCount; ++bit) {
        appendCell(bits[bit], samples);
    }
}

void LtcEncoder::appendClosingCell(std::vector<float>& samples) {
    appendCell(false, samples);
}

void LtcEncoder::appendCell(bool bit, std::vector<float>& samples) {
    appendHalfCell(bit ? Edge::present : Edge::absent, samples);
    appendHalfCell(Edge::present, samples);
}

void LtcEncoder::appendHalfCell(Edge atEnd, std::vector<float>& samples) {
    const double start = startOfHalfCell(halfCellCount_);
    const double end = startOfHalfCell(++halfCellCount_);
    const double halfRamp = halfRampSeconds * sampleRate_;
    // A sample stands for the middle of its interval, so that no edge falls right on one.
    for (;; ++sampleCount_) {
        const double position = static_cast<double>(sampleCount_) + 0.5;
        if (position >= end) {
            break;
        }
        double level = 1.0;
        if (edgeAtStart_ == Edge::present) {
            level = std::min(level, (position - start) / halfRamp);
        }
        if (atEnd == Edge::present) {
            level = std::min(level, (end - position) / halfRamp);
        }
        samples.push_back(polarity_ * static_cast<float>(level));
    }
    if (atEnd == Edge::present) {
        polarity_ = -polarity_;
    }
    edgeAtStart_ = atEnd;
}

// In samples. The product stays below 2^63 for days of timecode at any sample rate.
double LtcEncoder::startOfHalfCell(std::int64_t number) const {
    const std::int64_t samples = number * sampleRate_ * rate_.denominator;
    return static_cast<double>(samples) / (2.0 * bitCount * rate_.numerator);
}

}  // namespace tessivo::ltc
