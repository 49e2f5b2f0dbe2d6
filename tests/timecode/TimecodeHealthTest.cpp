#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/CarefulDecoder.h"
#include "timecode/LtcSignal.h"
#include "timecode/TimecodeHealth.h"
#include "timecode/TimecodeLock.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

using namespace tessivo;
using Motion = TimecodeHealth::Motion;

namespace {

/// A line and what is told of it.
struct Line {
    SimulatedMainQueue clock;
    CarefulDecoder decoder{clock};
    TimecodeHealth health;
    std::vector<LtcBiphaseDecoder::Frame> frames;
    int sampleRate = 48'000;

    void hear(std::span<const float> samples) {
        while (!samples.empty()) {
            const auto block = samples.first(std::min<std::size_t>(512, samples.size()));
            decoder.feed(block, sampleRate, [&](const HeardFrame& heard) {
                frames.push_back(heard.frame);
                health.take(heard);
            });
            float peak = 0.0F;
            for (const float sample : block) {
                peak = std::max(peak, std::abs(sample));
            }
            health.hear(peak, decoder.heardSeconds());
            samples = samples.subspan(block.size());
        }
    }
    TimecodeHealth::Reading reading() const { return health.reading(decoder.heardSeconds()); }
};

std::vector<float> noise(double seconds, float level) {
    Random random(5);
    std::vector<float> samples(static_cast<std::size_t>(seconds * 48'000));
    std::ranges::generate(samples, [&] { return level * random.gaussian(); });
    return samples;
}

}  // namespace

TEST_CASE("the rate is known within 0.7 seconds, and the speed beside it") {
    struct Row {
        const char* sent;
        TimecodeRate rate;
        double fps;
    };
    const Row rows[] = {{"24", {{24, false}, false}, 24.0},
                        {"25", {{25, false}, false}, 25.0},
                        {"29.97df", {{30, true}, true}, 29.97},
                        {"29.97ndf", {{30, false}, true}, 29.97},
                        {"30", {{30, false}, false}, 30.0}};
    for (const Row& row : rows) {
        for (const int sampleRate : {44'100, 48'000, 96'000}) {
            CAPTURE(row.sent);
            CAPTURE(sampleRate);
            Line line;
            line.sampleRate = sampleRate;
            const LtcSignal signal = encodeLtc(row.sent, 90, sampleRate);
            const auto early = static_cast<std::size_t>(0.7 * sampleRate);
            line.hear(std::span(signal.samples).first(early));
            CHECK(line.reading().rate == row.rate);
            line.hear(std::span(signal.samples).subspan(early));
            const auto reading = line.reading();
            CHECK(reading.rate == row.rate);
            CHECK(row.rate.framesPerSecond() == doctest::Approx(row.fps).epsilon(1e-5));
            CHECK(reading.speed == doctest::Approx(1.0).epsilon(1e-4));
            CHECK(reading.came == 88);
            CHECK(reading.due == 88);
            CHECK(reading.motion == Motion::running);
            CHECK(reading.advice == LineAdvice::none);
        }
    }
    // At 96 % it passes like 24, and its numbers tell that it isn't.
    Line slow;
    slow.sampleRate = 46'080;
    slow.hear(encodeLtc("25", 60).samples);
    CHECK(slow.reading().rate == TimecodeRate{{25, false}, false});
    CHECK(slow.reading().speed == doctest::Approx(0.96).epsilon(1e-4));
}

TEST_CASE("stops, jumps, gaps and a bad line are told apart") {
    Line line;
    line.hear(encodeLtc("25", 50).samples);
    line.hear(encodeLtc("25", 10, 48'000, {4, 0, 0, 0}).samples);
    CHECK(line.reading().motion == Motion::jumped);
    line.hear(noise(0.6, 0.0F));
    CHECK(line.reading().motion == Motion::stopped);

    struct Row {
        const char* name;
        void (*disturb)(std::size_t i, float& sample);
        LineAdvice advice;
        std::int64_t missing;  ///< of 249 frames
    };
    const Row rows[] = {
        {"clean", [](std::size_t, float&) {}, LineAdvice::none, 0},
        {"weak", [](std::size_t, float& sample) { sample *= 0.002F; }, LineAdvice::weak, 0},
        {"half a second lost",
         [](std::size_t i, float& sample) { sample *= i / 24'000 == 4 ? 0.0F : 1.0F; },
         LineAdvice::unsteady, 13},
        {"clipped, with gaps",
         [](std::size_t i, float& sample) { sample = i / 24'000 == 4 ? 0.0F : sample * 2.0F; },
         LineAdvice::clipped, 13},
        {"offset above the peak", [](std::size_t, float& sample) { sample = sample * 0.2F + 0.3F; },
         LineAdvice::hum, 0},
    };
    for (const Row& row : rows) {
        CAPTURE(row.name);
        Line bad;
        LtcSignal signal = encodeLtc("25", 125);
        for (std::size_t i = 0; i < signal.samples.size(); ++i) {
            signal.samples[i] *= 0.5F;
            row.disturb(i, signal.samples[i]);
        }
        bad.hear(signal.samples);
        const auto reading = bad.reading();
        CHECK(reading.advice == row.advice);
        CHECK(std::abs(reading.due - reading.came - row.missing) <= 1);
        CHECK(reading.motion == Motion::running);
    }
}

TEST_CASE("a frame counts beside the one before it, or where the timecode has to be by now") {
    struct Row {
        const char* what;
        LtcBiphaseDecoder::Frame frame;
        double end;
        bool followsClosely;
        bool counts;
    };
    static constexpr Row rows[] = {
        {"the first", {0, 9, 59, 28}, 10.0, false, false},
        {"its neighbour", {0, 9, 59, 29}, 10.04, true, true},
        {"the tenth minute, which drops no number", {0, 10, 0, 0}, 10.08, true, true},
        {"behind a gap, one frame too far", {0, 10, 0, 3}, 10.16, false, false},
        {"where it has to be", {0, 10, 0, 3}, 10.2, false, true},
        {"after most of a second", {0, 10, 0, 25}, 11.08, false, true},
        {"after more", {0, 10, 1, 23}, 12.2, false, false},
        {"the next number, much later", {0, 10, 1, 24}, 13.0, false, false},
    };
    TimecodeLock lock;
    for (const Row& row : rows) {
        CAPTURE(row.what);
        HeardFrame heard{row.frame, {}, row.end};
        heard.circumstances.dropFrame = true;
        heard.circumstances.followsClosely = row.followsClosely;
        CHECK(lock.confirms(heard) == row.counts);
    }
}

TEST_CASE("noise is no timecode, and playback over a noise floor starts where it was sent") {
    Line idle;
    idle.hear(noise(60.0, 0.1F));
    CHECK_FALSE(idle.reading().motion);
    CHECK_FALSE(idle.reading().rate);
    CHECK(idle.reading().advice == LineAdvice::noTimecode);

    Line line;
    std::vector<LtcBiphaseDecoder::Frame> sent, plain;
    LtcBiphaseDecoder decoder(line.clock);
    Random random(9);
    for (int start = 0; start < 60; ++start) {
        const LtcSignal signal = encodeLtc("25", 10, 48'000, {start % 24, start, 7, start % 15});
        sent.insert(sent.end(), signal.frames.begin(), signal.frames.end());
        std::vector<float> samples = noise(0.1, 0.003F);
        samples.insert(samples.end(), signal.samples.begin() + static_cast<long>(random.below(500)),
                       signal.samples.end());
        line.hear(samples);
        decoder.feed(samples, [&](const auto& frame) { plain.push_back(frame); });
    }
    const auto wrongOnes = [&](const auto& frames) {
        return std::ranges::count_if(frames, [&](const auto& frame) {
            return std::ranges::find(sent, frame) == sent.end();
        });
    };
    CHECK(wrongOnes(plain) > 0);
    CHECK(wrongOnes(line.frames) == 0);
    CHECK(line.frames.size() >= 60 * 8);
}
