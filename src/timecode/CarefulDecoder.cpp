#include "timecode/CarefulDecoder.h"

#include <cmath>
#include <numbers>

namespace tessivo {
namespace {

/// Below the slowest alternation of timecode at 24 frames per second, 960 Hz, by enough to leave
/// its edges where they are, and far above the mains.
constexpr double cutOffHertz = 400.0;
/// Far below any signal. After a block that ends below it the filter rests: values too small for
/// the processor's usual arithmetic would slow it down a hundred times, for as long as a silence
/// lasts.
constexpr float negligible = 1e-20F;

}  // namespace

std::span<const float> CarefulDecoder::highPass(std::span<const float> samples, double sampleRate) {
    const auto persistence =
        static_cast<float>(1.0 / (1.0 + 2.0 * std::numbers::pi * cutOffHertz / sampleRate));
    buffer_.resize(samples.size());
    float lastInput = lastInput_, output = lastOutput_;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        // What a faulty driver gives besides numbers would stay in the filter for ever.
        const float input = std::isfinite(samples[i]) ? samples[i] : lastInput;
        output = persistence * (output + (input - lastInput));
        lastInput = input;
        buffer_[i] = output;
    }
    lastInput_ = lastInput;
    lastOutput_ = std::fabs(output) < negligible ? 0.0F : output;
    return buffer_;
}

}  // namespace tessivo
