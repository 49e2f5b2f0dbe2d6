#pragma once

#include <span>

namespace tessivo {

/// The peak of `samples`: their largest absolute value, linear, 0 when there are none. A sample
/// that isn't a number is left out, so that a faulty driver doesn't blind the meters.
float peakLevel(std::span<const float> samples);

}  // namespace tessivo
