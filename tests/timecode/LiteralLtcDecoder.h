#pragma once

#include "timecode/LtcBiphaseDecoder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessivo {

/// The decoder's rules written down one by one, with a sign per sample and a list of bits, as slow
/// as they are plain: what the real one is compared with. Its state can be looked at.
struct LiteralLtcDecoder {
    using Frame = LtcBiphaseDecoder::Frame;

    float lastSampleSign = 1.0F;
    std::int64_t samplesSinceLastEdge = 0;
    bool lastEdgeWasHalfBit = false;
    std::optional<float> nominalCellWidth;
    std::vector<std::uint8_t> bitBuffer;

    std::optional<Frame> feedSample(float sample) {
        samplesSinceLastEdge += 1;
        const float sign = sample >= 0.0F ? 1.0F : -1.0F;
        if (sign == lastSampleSign) {
            return std::nullopt;
        }
        lastSampleSign = sign;
        const auto interval = static_cast<float>(samplesSinceLastEdge);
        samplesSinceLastEdge = 0;
        if (!nominalCellWidth) {
            nominalCellWidth = interval;
            return std::nullopt;
        }
        const float width = *nominalCellWidth;
        const bool isHalf = width * 0.75F > interval;
        if (isHalf && !lastEdgeWasHalfBit) {
            lastEdgeWasHalfBit = true;
        } else {
            appendBit(isHalf ? 1 : 0);
            lastEdgeWasHalfBit = false;
            const float cell = isHalf ? interval + interval : interval;
            nominalCellWidth = cell * 0.1F + width * 0.9F;
        }
        return tryDecodeSyncWord();
    }

private:
    void appendBit(std::uint8_t bit) {
        bitBuffer.push_back(bit);
        if (bitBuffer.size() > 200) {
            bitBuffer.erase(bitBuffer.begin());
        }
    }

    std::optional<Frame> tryDecodeSyncWord() {
        static constexpr std::array<std::uint8_t, 16> syncWord{0, 0, 1, 1, 1, 1, 1, 1,
                                                               1, 1, 1, 1, 1, 1, 0, 1};
        if (bitBuffer.size() < 80 ||
            !std::equal(syncWord.begin(), syncWord.end(), bitBuffer.end() - 16)) {
            return std::nullopt;
        }
        const std::vector<std::uint8_t> bits(bitBuffer.end() - 80, bitBuffer.end());
        const auto digit = [&](std::size_t first, std::size_t count) {
            std::int64_t value = 0;
            for (std::size_t i = 0; i < count; ++i) {
                value += std::int64_t{bits[first + i]} << i;
            }
            return value;
        };
        const Frame frame{.hours = digit(48, 4) + 10 * digit(56, 2),
                          .minutes = digit(32, 4) + 10 * digit(40, 3),
                          .seconds = digit(16, 4) + 10 * digit(24, 3),
                          .frames = digit(0, 4) + 10 * digit(8, 2)};
        if (frame.hours > 23 || frame.minutes > 59 || frame.seconds > 59 || frame.frames > 29) {
            return std::nullopt;
        }
        bitBuffer.clear();
        return frame;
    }
};

}  // namespace tessivo
