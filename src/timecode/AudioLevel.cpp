#include "timecode/AudioLevel.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace tessivo {

float peakLevel(std::span<const float> samples) {
    // Independent maxima: compilers may not reorder one chain of comparisons into vector code.
    constexpr std::size_t laneCount = 32;
    std::array<float, laneCount> lanes;
    lanes.fill(0.0F);
    const std::size_t whole = samples.size() - samples.size() % laneCount;
    for (std::size_t start = 0; start < whole; start += laneCount) {
        for (std::size_t lane = 0; lane < laneCount; ++lane) {
            const float magnitude = std::fabs(samples[start + lane]);
            lanes[lane] = magnitude > lanes[lane] ? magnitude : lanes[lane];
        }
    }
    float peak = 0.0F;
    for (const float sample : samples.subspan(whole)) {
        const float magnitude = std::fabs(sample);
        peak = magnitude > peak ? magnitude : peak;
    }
    return std::max(peak, *std::ranges::max_element(lanes));
}

}  // namespace tessivo
