#include "timecode/CarefulDecoder.h"

#include <cmath>
#include <numbers>

namespace tessivo {
namespace {

/// Below the slowest alternation of timecode at 24 frames per second, 960 Hz, by enough to leave
/// its edges where they are, and far above the mains.
constexpr double cutOffHertz = 400.0;
/// Far below any signal. Smaller values become zero: those too small for the processor's usual
/// arithmetic would slow it down a hundred times, for as long as the silence lasts.
constexpr float negligible = 1e-20F;

}  // namespace

std::span<const float> CarefulDecoder::highPass(std::span<const float> samples, double sampleRate) {
    const auto persistence =
        static_cast<float>(1.0 / (1.0 + 2.0 * std::numbers::pi * cutOffHertz / sampleRate));
    buffer_.resize(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // What a faulty driver gives besides numbers would stay in the filter for ever.
        const float input = std::isfinite(samples[i]) ? samples[i] : lastInput_;
        const float output = persistence * (lastOutput_ + (input - lastInput_));
        lastOutput_ = std::fabs(output) < negligible ? 0.0F : output;
        lastInput_ = input;
        buffer_[i] = lastOutput_;
    }
    return buffer_;
}

}  // namespace tessivo
