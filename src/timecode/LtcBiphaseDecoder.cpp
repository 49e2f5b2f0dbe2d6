#include "timecode/LtcBiphaseDecoder.h"

#include "platform/Clock.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <utility>

namespace tessivo {

namespace {

constexpr std::uint32_t frameBitCount = 80;
constexpr unsigned dropFrameBit = 10;

// 0011 1111 1111 1101 in order of arrival (SMPTE ST 12-1, synchronisation word), oldest in bit 0.
constexpr std::uint16_t syncWordPattern = 0xBFFC;

constexpr float halfCellLimit = 0.75F;
constexpr float adaptation = 0.1F;
constexpr float persistence = 0.9F;

bool isNegative(float sample) {
    return !(sample >= 0.0F);
}

constexpr std::size_t signChunkSize = 64;
constexpr std::size_t signWordSize = 32;
constexpr auto bitWeights = [] {
    std::array<std::uint32_t, signWordSize> weights{};
    for (std::size_t i = 0; i < signWordSize; ++i) {
        weights[i] = std::uint32_t{1} << i;
    }
    return weights;
}();

// Bit i is set when sample i is negative. In this form, without a choice that could be a branch,
// compilers make vector code of it: at most 32 samples.
template <std::size_t Extent>
std::uint32_t negativeWord(std::span<const float, Extent> samples) {
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        mask |= bitWeights[i] & (0U - static_cast<std::uint32_t>(isNegative(samples[i])));
    }
    return mask;
}

// The same of at most 64 samples.
std::uint64_t negativeMask(std::span<const float> samples) {
    if (samples.size() == signChunkSize) {
        return negativeWord(samples.first<signWordSize>()) |
               std::uint64_t{negativeWord(samples.last<signWordSize>())} << signWordSize;
    }
    const std::size_t count = std::min(samples.size(), signWordSize);
    return negativeWord(samples.first(count)) | std::uint64_t{negativeWord(samples.subspan(count))}
                                                    << signWordSize;
}

// A run of consecutive bits, the lowest-numbered one having weight 1.
struct BitRange {
    unsigned first;
    unsigned count;

    std::int64_t valueIn(std::uint64_t fields) const {
        return static_cast<std::int64_t>((fields >> first) & ((std::uint64_t{1} << count) - 1));
    }
};

std::int64_t bcdValue(std::uint64_t fields, BitRange units, BitRange tens) {
    return units.valueIn(fields) + 10 * tens.valueIn(fields);
}

}  // namespace

void LtcBiphaseDecoder::Signal::appendBit(unsigned bit) {
    assert(bit <= 1 && bits.validCount <= frameBitCount + 1);
    const std::uint64_t oldestOfSyncWord = bits.syncWord & 1U;
    bits.fields = (bits.fields >> 1) | (oldestOfSyncWord << 63);
    bits.syncWord = static_cast<std::uint16_t>((bits.syncWord >> 1) | (bit << 15));
    bits.validCount += bits.validCount <= frameBitCount ? 1 : 0;
}

// Gives whether the last bits may be a frame.
inline bool LtcBiphaseDecoder::Signal::takeEdge() {
    assert(samplesSinceLastEdge > 0 && nominalCellWidth >= 0.0F);
    lastSampleNegative = !lastSampleNegative;
    const auto interval = static_cast<float>(std::exchange(samplesSinceLastEdge, 0));
    const float width = nominalCellWidth;
    if (width == 0.0F) {
        nominalCellWidth = interval;
        return false;
    }
    if (!(width * halfCellLimit > interval)) {
        // However long the interval: after a silence the estimate must be able to grow again.
        appendBit(0);
        lastEdgeWasHalfBit = false;
        nominalCellWidth = interval * adaptation + width * persistence;
    } else if (lastEdgeWasHalfBit) {
        appendBit(1);
        lastEdgeWasHalfBit = false;
        nominalCellWidth = (interval + interval) * adaptation + width * persistence;
    } else {
        lastEdgeWasHalfBit = true;
    }
    return bits.syncWord == syncWordPattern && bits.validCount >= frameBitCount;
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::feedSample(float sample) {
    std::span<const float> one(&sample, 1);
    return takeUntilFrame(one);
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::takeUntilFrame(
    std::span<const float>& samples) {
    Signal signal = signal_;
    while (!samples.empty()) {
        const std::size_t count = std::min(samples.size(), signChunkSize);
        const std::uint64_t negative = negativeMask(samples.first(count));
        const std::uint64_t before = (negative << 1) | (signal.lastSampleNegative ? 1U : 0U);
        std::uint64_t edges = (negative ^ before) & (~std::uint64_t{0} >> (signChunkSize - count));
        std::size_t taken = 0;
        for (; edges != 0; edges &= edges - 1) {
            const auto edge = static_cast<std::size_t>(std::countr_zero(edges)) + 1;
            signal.samplesSinceLastEdge += static_cast<std::int64_t>(edge - taken);
            taken = edge;
            if (signal.takeEdge()) {
                signal_ = signal;
                const std::optional<Frame> frame = takeFrame();
                if (frame) {
                    samples = samples.subspan(edge);
                    return frame;
                }
            }
        }
        signal.samplesSinceLastEdge += static_cast<std::int64_t>(count - taken);
        samples = samples.subspan(count);
    }
    signal_ = signal;
    return std::nullopt;
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::takeFrame() {
    BitBuffer& bits = signal_.bits;
    const std::optional<Frame> frame = decodeFrameBits(bits.fields);
    if (frame) {
        lastValidFrameTime_ = clock_.moment();
        lastFrame_ = {.followsClosely = bits.validCount == frameBitCount,
                      .dropFrame = (bits.fields >> dropFrameBit & 1U) != 0};
        bits = {};
    }
    return frame;
}

// Positions from the bit assignment table of SMPTE ST 12-1. User bits and flags have no part in it.
std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::decodeFrameBits(std::uint64_t fields) {
    const Frame frame{
        .hours = bcdValue(fields, {48, 4}, {56, 2}),
        .minutes = bcdValue(fields, {32, 4}, {40, 3}),
        .seconds = bcdValue(fields, {16, 4}, {24, 3}),
        .frames = bcdValue(fields, {0, 4}, {8, 2}),
    };
    // Only whole values are judged: a units digit above 9 passes while the sum is in its range.
    if (frame.hours > 23 || frame.minutes > 59 || frame.seconds > 59 || frame.frames > 29) {
        return std::nullopt;
    }
    return frame;
}

}  // namespace tessivo
