#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace tessivo::test {

/// Numbers that are the same everywhere for the same seed.
class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t next() { return engine_(); }
    /// A number from 0 to `limit` - 1.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(next() % limit); }
    /// Mean 0, variance 1, from -6 to 6: the sum of twelve even draws, exact in any arithmetic.
    float gaussian() {
        float sum = -6.0F;
        for (int i = 0; i < 12; ++i) {
            sum += static_cast<float>(next() >> 40) / 16'777'216.0F;
        }
        return sum;
    }

private:
    std::mt19937_64 engine_;
};

}  // namespace tessivo::test
