#include "platform/simulated/SimulatedMainQueue.h"
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

/// Feeds the same samples one by one and in pieces of any length, and compares what comes out,
/// where it comes out. Gives the number of frames.
std::size_t compareWays(const std::vector<float>& samples, Random& random) {
    const SimulatedMainQueue clock;
    LtcBiphaseDecoder single(clock), pieces(clock);
    std::vector<Frame> expected, found;
    for (std::size_t start = 0; start < samples.size();) {
        const std::size_t count = std::min(samples.size() - start, random.below(150));
        const std::span<const float> piece = std::span(samples).subspan(start, count);
        pieces.feed(piece, [&](const Frame& frame) { found.push_back(frame); });
        for (const float sample : piece) {
            if (const std::optional<Frame> frame = single.feedSample(sample)) {
                expected.push_back(*frame);
            }
        }
        REQUIRE(found == expected);
        start += count;
    }
    return found.size();
}

}  // namespace

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
    std::string fifteen = bitsOfFrame({});
    fifteen.replace(0, 4, "1111");  // a units digit above 9
    CHECK(decodeAll(signalOfBits(fifteen)) == std::vector{Frame{.frames = 15}});
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

TEST_CASE("the time of each decoded frame is remembered, before the sample after it is taken") {
    SimulatedMainQueue clock(Instant{1000.0});
    LtcBiphaseDecoder decoder(clock);
    std::vector<Instant> times;
    const auto feed = [&](const std::string& bits) {
        decoder.feed(signalOfBits(bits), [&](const Frame&) {
            times.push_back(decoder.lastValidFrameTime());
            clock.advance(1.0);
        });
    };
    feed(bitsOfFrame({24, 0, 0, 0}) + std::string(200, '0'));
    CHECK(decoder.lastValidFrameTime() == Instant::distantPast());
    clock.advance(5.0);
    feed(bitsOfFrame({1, 2, 3, 4}) + bitsOfFrame({1, 2, 3, 5}) + std::string(200, '0'));
    CHECK(times == std::vector{Instant{1005.0}, Instant{1006.0}});
    CHECK(decoder.lastValidFrameTime() == Instant{1006.0});
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

TEST_CASE("feeding pieces of any length gives what feeding sample by sample gives") {
    Random random(7);
    const float values[] = {0.5F,        -0.5F,    0.0F,      -0.0F, notANumber,
                            -notANumber, infinity, -infinity, 1e-42F};
    for (int round = 0; round < 50; ++round) {
        std::vector<float> samples(2000);
        for (float& sample : samples) {
            sample = values[random.below(std::size(values))];
        }
        compareWays(samples, random);
    }
    for (const float noise : {0.0F, 0.1F, 0.2F, 0.3F}) {
        std::vector<float> samples = encodeWithLibltc({.frameCount = 100}).samples;
        for (float& sample : samples) {
            sample += noise * random.gaussian();
        }
        const std::size_t frames = compareWays(samples, random);
        CHECK((noise > 0.0F || frames >= 98));
    }
}
