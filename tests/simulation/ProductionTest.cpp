#include "simulation/Production.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <cstdlib>
#include <string>

using tessivo::test::Production;

namespace {

constexpr int stepsPerSeed = 120;

std::uint64_t numberFrom(const char* variable, std::uint64_t otherwise) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::stoull(text) : otherwise;
}

}  // namespace

// TESSIVO_SEEDS says how many seeds to run, TESSIVO_FIRST_SEED from which on: the one that a
// failure shows, and 1, run that one again.
TEST_CASE("a production ends well whatever happens to its network") {
    const std::uint64_t first = numberFrom("TESSIVO_FIRST_SEED", 1);
    const std::uint64_t count = numberFrom("TESSIVO_SEEDS", 300);
    for (std::uint64_t seed = first; seed < first + count; ++seed) {
        CAPTURE(seed);
        Production(seed).run(stepsPerSeed);
    }
}

TEST_CASE("the same seed gives the same production") {
    Production once(42);
    Production again(42);
    once.run(stepsPerSeed);
    again.run(stepsPerSeed);
    CHECK(once.history() == again.history());
    Production other(43);
    other.run(stepsPerSeed);
    CHECK(once.history() != other.history());
}
