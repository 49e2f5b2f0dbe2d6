#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

using tessivo::decodeAll;
using tessivo::encodeWithLibltc;
using tessivo::LtcSignalRequest;
using Frame = tessivo::LtcBiphaseDecoder::Frame;

namespace {

constexpr float minus60dBFS = 0.002F;  // half the full scale times this is a thousandth of it

struct Rate {
    std::string name;
    double framesPerSecond;
    bool dropFrame;
};
const Rate rates[] = {
    {"24", 24.0, false},
    {"25", 25.0, false},
    {"29.97 drop-frame", 30'000.0 / 1'001.0, true},
    {"29.97", 30'000.0 / 1'001.0, false},
    {"30", 30.0, false},
};

/// All frames but the first two must come back, in their order and without any other. While the
/// width of a cell is still being found, the first two may be missed or misread.
void checkDecoded(const LtcSignalRequest& request) {
    const tessivo::LtcSignal signal = encodeWithLibltc(request);
    const std::vector<Frame> found = decodeAll(signal.samples);
    const std::size_t settled = signal.frames.size() - 2;
    REQUIRE(found.size() >= settled);
    CHECK(found.size() <= settled + 2);
    CHECK(text(std::span(found).last(settled)) == text(std::span(signal.frames).last(settled)));
}

}  // namespace

TEST_CASE("every frame but the first two is read, at any rate, speed, polarity and level") {
    for (const Rate& rate : rates) {
        for (const double sampleRate : {44'100.0, 48'000.0, 88'200.0, 96'000.0, 192'000.0}) {
            for (const double speed : {0.5, 1.0, 1.5}) {
                for (const float gain : {1.0F, -1.0F, minus60dBFS, -minus60dBFS}) {
                    CAPTURE(rate.name);
                    CAPTURE(sampleRate);
                    CAPTURE(speed);
                    CAPTURE(gain);
                    checkDecoded({.framesPerSecond = rate.framesPerSecond,
                                  .dropFrame = rate.dropFrame,
                                  .sampleRate = sampleRate,
                                  .speed = speed,
                                  .gain = gain,
                                  .frameCount = 24});
                }
            }
        }
    }
}

TEST_CASE("a minute of each rate is read, over the skipped numbers of drop-frame counting too") {
    for (const Rate& rate : rates) {
        CAPTURE(rate.name);
        checkDecoded({.framesPerSecond = rate.framesPerSecond,
                      .dropFrame = rate.dropFrame,
                      .frameCount = 1800,
                      .start = {.hours = 23, .minutes = 58, .seconds = 30}});
    }
}

TEST_CASE("timecode is read whatever came before it") {
    const tessivo::LtcSignal signal = encodeWithLibltc({.frameCount = 30});
    tessivo::Random random(3);
    struct Row {
        std::string name;
        std::vector<float> before;
        std::size_t mayMiss;
    };
    std::vector<float> noise(48'000);
    for (float& sample : noise) {
        sample = random.gaussian();
    }
    const Row rows[] = {
        {"silence", std::vector<float>(48'000, 0.0F), 10},
        {"a negative level", std::vector<float>(48'000, -0.2F), 10},
        {"noise", noise, 3},
        {"timecode at a rate four times as high",
         encodeWithLibltc({.sampleRate = 192'000.0, .frameCount = 10}).samples, 3},
    };
    for (const Row& row : rows) {
        CAPTURE(row.name);
        std::vector<float> samples = row.before;
        samples.insert(samples.end(), signal.samples.begin(), signal.samples.end());
        const std::vector<Frame> found = decodeAll(samples);
        REQUIRE_FALSE(found.empty());
        CHECK(found.back() == signal.frames.back());
        const auto present = [&](const Frame& frame) {
            return std::find(found.begin(), found.end(), frame) != found.end();
        };
        for (std::size_t i = row.mayMiss; i < signal.frames.size(); ++i) {
            CHECK(present(signal.frames[i]));
        }
    }
}
