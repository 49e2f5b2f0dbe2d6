#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/LiteralLtcDecoder.h"
#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <initializer_list>
#include <limits>
#include <string>
#include <utility>
#include <vector>

using tessivo::appendIntervals;
using tessivo::bitsOfFrame;
using tessivo::decodeAll;
using tessivo::encodeWithLibltc;
using tessivo::Instant;
using tessivo::intervalsOfBits;
using tessivo::LiteralLtcDecoder;
using tessivo::LtcBiphaseDecoder;
using tessivo::Random;
using tessivo::SimulatedMainQueue;
using Frame = LtcBiphaseDecoder::Frame;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

/// A first interval of 20 that seeds the width of a cell, then these bits, then the edge that ends
/// the last of them.
std::vector<float> signalOfBits(const std::string& bits) {
    std::vector<float> samples;
    appendIntervals(samples, std::vector<int>{19});  // and the sample that has the edge
    appendIntervals(samples, intervalsOfBits(bits, 20));
    appendIntervals(samples, std::vector<int>{1});
    return samples;
}

/// The bits that the rules make of these intervals, by way of the plain decoder.
std::string bitsOfIntervals(std::vector<int> intervals, float& width) {
    --intervals.front();  // the sample that has the edge counts too
    std::vector<float> samples;
    appendIntervals(samples, intervals);
    appendIntervals(samples, std::vector<int>{1});
    LiteralLtcDecoder decoder;
    for (const float sample : samples) {
        decoder.feedSample(sample);
    }
    width = decoder.nominalCellWidth.value_or(0.0F);
    std::string bits;
    for (const std::uint8_t bit : decoder.bitBuffer) {
        bits += bit != 0 ? '1' : '0';
    }
    return bits;
}

/// Feeds the same samples to the plain decoder, sample by sample and in pieces of any length, and
/// compares what comes out, where it comes out. Gives the number of frames.
std::size_t compareWays(const std::vector<float>& samples, Random& random) {
    const SimulatedMainQueue clock;
    LiteralLtcDecoder literal;
    LtcBiphaseDecoder single(clock), pieces(clock);
    std::vector<Frame> expected, found;
    for (std::size_t start = 0; start < samples.size();) {
        const std::size_t count = std::min(samples.size() - start, random.below(150));
        const std::span<const float> piece = std::span(samples).subspan(start, count);
        pieces.feed(piece, [&](const Frame& frame) { found.push_back(frame); });
        for (const float sample : piece) {
            const std::optional<Frame> frame = literal.feedSample(sample);
            if (frame) {
                expected.push_back(*frame);
            }
            REQUIRE(single.feedSample(sample) == frame);
        }
        REQUIRE(found == expected);
        start += count;
    }
    return found.size();
}

}  // namespace

// The width and the bits can be looked at in the plain decoder only; the last test of this file
// holds the real one to it.
TEST_CASE("intervals become bits by the width of a cell") {
    struct Row {
        std::vector<int> intervals;
        const char* bits;
        float width;
    };
    const Row rows[] = {
        {{20}, "", 20.0F},           // the first edge only seeds the width
        {{20, 14}, "", 20.0F},       // a first half moves nothing
        {{20, 15}, "0", 19.5F},      // three quarters are a whole cell
        {{20, 10, 10}, "1", 20.0F},  // two halves
        {{20, 10, 20}, "0", 20.0F},  // a lone half is dropped
        {{20, 14, 10}, "1", 20.0F},  // only the second half moves the width
        {{20, 10, 14}, "1", 20.8F},  //
        {{20, 10, 10, 10, 20, 10, 10}, "101", 20.0F},
        {{20, 1000}, "0", 118.0F},  // nothing is too long
    };
    for (const Row& row : rows) {
        float width = 0.0F;
        CHECK(bitsOfIntervals(row.intervals, width) == row.bits);
        CHECK(width == doctest::Approx(row.width));
    }
}

TEST_CASE("a frame is read from its 80 bits, within the ranges of its fields") {
    struct Row {
        Frame frame;
        bool accepted;
    };
    const Row rows[] = {
        {{0, 0, 0, 0}, true},     {{23, 59, 59, 29}, true}, {{1, 2, 3, 4}, true},
        {{19, 48, 37, 26}, true}, {{24, 0, 0, 0}, false},   {{0, 60, 0, 0}, false},
        {{0, 0, 60, 0}, false},   {{0, 0, 0, 30}, false},   {{39, 79, 79, 39}, false},
    };
    for (const Row& row : rows) {
        CAPTURE(text(row.frame));
        const std::vector<Frame> found = decodeAll(signalOfBits(bitsOfFrame(row.frame)));
        CHECK(found == (row.accepted ? std::vector{row.frame} : std::vector<Frame>{}));
    }
    const Frame fifteen{.frames = 15};
    CHECK(decodeAll(signalOfBits(bitsOfFrame(fifteen, tessivo::Digits::unitsOnly))) ==
          std::vector{fifteen});
}

TEST_CASE("an interval of exactly three quarters of a cell is a whole one") {
    const Frame frame{1, 2, 3, 20};  // begins with a zero
    for (const auto& [first, isWhole] : {std::pair{15, true}, std::pair{14, false}}) {
        std::vector<int> intervals = intervalsOfBits(bitsOfFrame(frame), 20);
        intervals.front() = first;
        intervals.push_back(1);
        std::vector<float> samples;
        appendIntervals(samples, std::vector<int>{19});
        appendIntervals(samples, intervals);
        CHECK(decodeAll(samples).size() == (isWhole ? 1 : 0));
    }
}

TEST_CASE("user bits and flags don't change what a frame says") {
    const Frame frame{10, 20, 30, 14};
    std::string bits = bitsOfFrame(frame);
    for (const std::size_t bit :
         std::initializer_list<std::size_t>{4,  5,  6,  7,  10, 11, 12, 15, 20, 23, 27, 28,
                                            31, 36, 39, 43, 44, 47, 52, 55, 58, 59, 60, 63}) {
        bits[bit] = '1';
    }
    CHECK(decodeAll(signalOfBits(bits)) == std::vector{frame});
}

TEST_CASE("a frame needs 80 bits since the last one, and a refused one takes none away") {
    const std::string good = bitsOfFrame({12, 34, 56, 7});
    const std::string refused = bitsOfFrame({24, 0, 0, 0});
    struct Row {
        std::string bits;
        std::size_t frameCount;
    };
    const Row rows[] = {
        {good.substr(1), 0},
        {std::string(1, '0') + good.substr(1), 1},
        {std::string(300, '0') + good, 1},
        {good + good, 2},
        {good + good.substr(1), 1},
        // The last 80 bits of an accepted frame aren't looked at again; those of a refused one are.
        {refused + good, 1},
        {good.substr(0, 40) + refused + good, 1},
        {good + "1" + good.substr(1), 2},
    };
    for (const Row& row : rows) {
        CAPTURE(row.bits);
        CHECK(decodeAll(signalOfBits(row.bits)).size() == row.frameCount);
    }
}

TEST_CASE("only the time of a decoded frame is remembered") {
    SimulatedMainQueue clock(Instant{1000.0});
    LtcBiphaseDecoder decoder(clock);
    const auto feed = [&](const std::string& bits) {
        decoder.feed(signalOfBits(bits), [](const Frame&) {});
    };
    CHECK(decoder.lastValidFrameTime() == Instant::distantPast());
    feed(bitsOfFrame({24, 0, 0, 0}));
    CHECK(decoder.lastValidFrameTime() == Instant::distantPast());
    clock.advance(5.0);
    feed(bitsOfFrame({1, 0, 0, 0}));
    CHECK(decoder.lastValidFrameTime() == Instant{1005.0});
    clock.advance(5.0);
    feed(std::string(200, '0'));
    CHECK(decoder.lastValidFrameTime() == Instant{1005.0});
}

TEST_CASE("zeros are positive, and what isn't a number is negative") {
    const Frame frame{1, 2, 3, 4};
    struct Row {
        float positive, negative;
    };
    for (const Row& row : {Row{0.0F, -0.5F}, Row{-0.0F, -1e-42F}, Row{1e-42F, notANumber},
                           Row{infinity, -notANumber}, Row{0.5F, -infinity}}) {
        std::vector<float> samples = signalOfBits(bitsOfFrame(frame));
        for (float& sample : samples) {
            sample = sample > 0.0F ? row.positive : row.negative;
        }
        CHECK(decodeAll(samples) == std::vector{frame});
        Random random(1);
        CHECK(compareWays(samples, random) == 1);
    }
    CHECK(decodeAll(std::vector<float>(100'000, 0.0F)).empty());
}

TEST_CASE("a frame is handed over before the sample that follows it is taken") {
    std::vector<float> samples =
        signalOfBits(bitsOfFrame({1, 2, 3, 4}) + bitsOfFrame({1, 2, 3, 5}));
    SimulatedMainQueue clock(Instant{0.0});
    LtcBiphaseDecoder decoder(clock);
    std::vector<Instant> times;
    decoder.feed(samples, [&](const Frame&) {
        times.push_back(decoder.lastValidFrameTime());
        clock.advance(1.0);
    });
    CHECK(times == std::vector{Instant{0.0}, Instant{1.0}});
}

TEST_CASE("every way of feeding gives what the rules give") {
    Random random(7);
    SUBCASE("random samples, with all kinds of values") {
        const float values[] = {0.5F,        -0.5F,    0.0F,      -0.0F, notANumber,
                                -notANumber, infinity, -infinity, 1e-42F};
        for (int round = 0; round < 50; ++round) {
            std::vector<float> samples(2000);
            for (float& sample : samples) {
                sample = values[random.below(std::size(values))];
            }
            compareWays(samples, random);
        }
    }
    SUBCASE("timecode whose edges wobble, up to where it can't be read") {
        std::size_t frames = 0;
        for (std::size_t wobble = 0; wobble < 7; ++wobble) {
            std::vector<float> samples;
            for (int i = 0; i < 200; ++i) {
                const auto seconds = static_cast<std::int64_t>(random.below(60));
                std::vector<int> intervals = intervalsOfBits(bitsOfFrame({1, 2, seconds, 4}), 20);
                for (int& interval : intervals) {
                    const std::size_t drawn = random.below(2 * wobble + 1);
                    interval += static_cast<int>(drawn) - static_cast<int>(wobble);
                }
                appendIntervals(samples, intervals);
            }
            frames += compareWays(samples, random);
        }
        CHECK(frames > 600);
        CHECK(frames < 1300);
    }
    SUBCASE("timecode, clean and under noise that breaks some of it") {
        for (const float noise : {0.0F, 0.1F, 0.2F, 0.3F}) {
            std::vector<float> samples = encodeWithLibltc({.frameCount = 100}).samples;
            for (float& sample : samples) {
                sample += noise * random.gaussian();
            }
            const std::size_t frames = compareWays(samples, random);
            CHECK((noise > 0.0F || frames >= 98));
        }
    }
}
