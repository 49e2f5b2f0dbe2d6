#pragma once

#include <cstddef>
#include <span>

namespace tessivo {

/// A view of one block of audio: 32-bit float samples, nominally from -1 to 1, the channels one
/// after the other at equal distances. It owns nothing; whoever hands it over says how long it is
/// good for.
struct AudioBlock {
    const float* samples = nullptr;   ///< the first sample of the first channel
    std::size_t channelDistance = 0;  ///< from one channel's first sample to the next one's
    std::size_t channelCount = 0;
    std::size_t frameCount = 0;  ///< samples in each channel, may be 0
    double sampleRate = 0.0;     ///< samples per second

    std::span<const float> channel(std::size_t index) const {
        return {samples + index * channelDistance, frameCount};
    }
};

}  // namespace tessivo
