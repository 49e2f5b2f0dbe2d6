#include "timecode/LtcBiphaseDecoder.h"

#include "platform/Clock.h"

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

constexpr std::size_t signChunkSize = 32;
constexpr auto bitWeights = [] {
    std::array<std::uint32_t, signChunkSize> weights{};
    for (std::size_t i = 0; i < signChunkSize; ++i) {
        weights[i] = std::uint32_t{1} << i;
    }
    return weights;
}();

// Bit i is set when sample i is negative. In this form, without a choice that could be a branch,
// compilers make vector code of it: at most 32 samples.
template <std::size_t Extent>
std::uint32_t negativeMask(std::span<const float, Extent> samples) {
    std::uint32_t mask = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        mask |= bitWeights[i] & (0U - static_cast<std::uint32_t>(isNegative(samples[i])));
    }
    return mask;
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

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::feedSample(float sample) {
    ++samplesSinceLastEdge_;
    if (isNegative(sample) == lastSampleNegative_) {
        return std::nullopt;
    }
    lastSampleNegative_ = !lastSampleNegative_;
    return takeEdge();
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::takeUntilFrame(
    std::span<const float>& samples) {
    while (!samples.empty()) {
        const SignChunk chunk = readSigns(samples);
        std::size_t taken = 0;
        for (std::uint32_t edges = chunk.edges; edges != 0; edges &= edges - 1) {
            const auto edge = static_cast<std::size_t>(std::countr_zero(edges)) + 1;
            samplesSinceLastEdge_ += static_cast<std::int64_t>(edge - taken);
            taken = edge;
            lastSampleNegative_ = !lastSampleNegative_;
            if (const std::optional<Frame> frame = takeEdge()) {
                samples = samples.subspan(edge);
                return frame;
            }
        }
        samplesSinceLastEdge_ += static_cast<std::int64_t>(chunk.count - taken);
        samples = samples.subspan(chunk.count);
    }
    return std::nullopt;
}

LtcBiphaseDecoder::SignChunk LtcBiphaseDecoder::readSigns(std::span<const float> samples) const {
    assert(!samples.empty());
    const bool whole = samples.size() >= signChunkSize;
    const std::size_t count = whole ? signChunkSize : samples.size();
    const std::uint32_t negative =
        whole ? negativeMask(samples.first<signChunkSize>()) : negativeMask(samples);
    const std::uint32_t before = (negative << 1) | (lastSampleNegative_ ? 1U : 0U);
    const std::uint32_t known = ~std::uint32_t{0} >> (signChunkSize - count);
    return {(negative ^ before) & known, count};
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::takeEdge() {
    assert(samplesSinceLastEdge_ > 0 && (!nominalCellWidth_ || *nominalCellWidth_ > 0.0F));
    const auto interval = static_cast<float>(std::exchange(samplesSinceLastEdge_, 0));
    if (!nominalCellWidth_) {
        nominalCellWidth_ = interval;
        return std::nullopt;
    }
    const float width = *nominalCellWidth_;
    if (!(width * halfCellLimit > interval)) {
        // However long the interval: after a silence the estimate must be able to grow again.
        appendBit(0);
        lastEdgeWasHalfBit_ = false;
        nominalCellWidth_ = interval * adaptation + width * persistence;
    } else if (lastEdgeWasHalfBit_) {
        appendBit(1);
        lastEdgeWasHalfBit_ = false;
        nominalCellWidth_ = (interval + interval) * adaptation + width * persistence;
    } else {
        lastEdgeWasHalfBit_ = true;
    }
    return tryDecodeSyncWord();
}

void LtcBiphaseDecoder::appendBit(std::uint8_t bit) {
    assert(bit <= 1 && bitBuffer_.validCount <= frameBitCount + 1);
    const std::uint64_t oldestOfSyncWord = bitBuffer_.syncWord & 1U;
    bitBuffer_.fields = (bitBuffer_.fields >> 1) | (oldestOfSyncWord << 63);
    bitBuffer_.syncWord =
        static_cast<std::uint16_t>((bitBuffer_.syncWord >> 1) | (unsigned{bit} << 15));
    if (bitBuffer_.validCount <= frameBitCount) {
        ++bitBuffer_.validCount;
    }
}

std::optional<LtcBiphaseDecoder::Frame> LtcBiphaseDecoder::tryDecodeSyncWord() {
    if (bitBuffer_.syncWord != syncWordPattern || bitBuffer_.validCount < frameBitCount) {
        return std::nullopt;
    }
    const std::optional<Frame> frame = decodeFrameBits(bitBuffer_.fields);
    if (frame) {
        lastValidFrameTime_ = clock_.now();
        lastFrame_ = {.followsClosely = bitBuffer_.validCount == frameBitCount,
                      .dropFrame = (bitBuffer_.fields >> dropFrameBit & 1U) != 0};
        bitBuffer_ = {};
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
