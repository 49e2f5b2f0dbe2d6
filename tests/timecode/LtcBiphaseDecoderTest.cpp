#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

using tessivo::bitsOfFrame;
using tessivo::decodeAll;
using tessivo::LtcBiphaseDecoder;
using tessivo::Moment;
using tessivo::Random;
using tessivo::signalOfBits;
using tessivo::SimulatedMainQueue;
using Frame = LtcBiphaseDecoder::Frame;

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

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

TEST_CASE("the last 80 bits are a frame when they end in the sync word and their fields fit") {
    const Frame frame{10, 20, 30, 14};
    const std::string good = bitsOfFrame(frame);
    const std::string refused = bitsOfFrame({24, 0, 0, 0});
    std::string fifteen = bitsOfFrame({});
    fifteen.replace(0, 4, "1111");  // a units digit above 9
    std::string flagged = good;     // all user bits and flags set
    for (const std::size_t userBits : {4U, 12U, 20U, 28U, 36U, 44U, 52U, 60U}) {
        flagged.replace(userBits, 4, "1111");
    }
    for (const std::size_t flag : {10U, 11U, 27U, 43U, 58U, 59U}) {
        flagged[flag] = '1';
    }
    struct Row {
        std::string bits;
        std::vector<Frame> frames;
    };
    const Row rows[] = {
        {bitsOfFrame({0, 0, 0, 0}), {{0, 0, 0, 0}}},
        {bitsOfFrame({23, 59, 59, 29}), {{23, 59, 59, 29}}},
        {bitsOfFrame({19, 48, 37, 26}), {{19, 48, 37, 26}}},
        {refused, {}},
        {bitsOfFrame({0, 60, 0, 0}), {}},
        {bitsOfFrame({0, 0, 60, 0}), {}},
        {bitsOfFrame({0, 0, 0, 30}), {}},
        {fifteen, {{.frames = 15}}},
        {flagged, {frame}},
        {good.substr(1), {}},
        {std::string(300, '0') + good, {frame}},
        {good + good, {frame, frame}},
        // The bits of an accepted frame aren't looked at again; those of a refused one are, here
        // its second half as the first of another, with the sync word as seconds and minutes.
        {good + good.substr(1), {frame}},
        {refused + good, {frame}},
        {refused + good.substr(40), {{10, 35, 50, 0}}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.bits);
        CHECK(text(decodeAll(signalOfBits(row.bits))) == text(row.frames));
    }
}

TEST_CASE("an interval of exactly three quarters of a cell is a whole one") {
    std::vector<float> samples = signalOfBits(bitsOfFrame({1, 2, 3, 20}));  // begins with a zero
    samples.erase(samples.begin() + 19, samples.begin() + 24);
    CHECK(decodeAll(samples).size() == 1);
    samples.erase(samples.begin() + 19);
    CHECK(decodeAll(samples).empty());
}

TEST_CASE("the time of each decoded frame is remembered, before the sample after it is taken") {
    SimulatedMainQueue clock;
    LtcBiphaseDecoder decoder(clock);
    std::vector<Moment> times;
    const auto feed = [&](const std::string& bits) {
        decoder.feed(signalOfBits(bits), [&](const Frame&) {
            times.push_back(decoder.lastValidFrameTime());
            clock.advance(1.0);
        });
    };
    feed(bitsOfFrame({24, 0, 0, 0}) + std::string(200, '0'));
    CHECK(decoder.lastValidFrameTime() == Moment::distantPast());
    clock.advance(5.0);
    feed(bitsOfFrame({1, 2, 3, 4}) + bitsOfFrame({1, 2, 3, 5}) + std::string(200, '0'));
    CHECK(times == std::vector{Moment{5.0}, Moment{6.0}});
    CHECK(decoder.lastValidFrameTime() == Moment{6.0});
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
        std::vector<float> samples = tessivo::encodeLtc("25", 100).samples;
        for (float& sample : samples) {
            sample += noise * random.gaussian();
        }
        const std::size_t frames = compareWays(samples, random);
        CHECK((noise > 0.0F || frames >= 98));
    }
}

TEST_CASE("every frame but the first two is read, at any rate, speed, polarity and level") {
    // At half the speed, a tape has the edges of twice the sample rate.
    const int sampleRates[] = {22'050, 24'000, 32'000, 44'100, 48'000, 88'200, 192'000, 384'000};
    for (const char* rate : {"24", "25", "29.97df", "29.97ndf", "30"}) {
        for (const int sampleRate : sampleRates) {
            for (const float gain : {1.0F, -1.0F, 0.001F, -0.001F}) {
                CAPTURE(rate);
                CAPTURE(sampleRate);
                CAPTURE(gain);
                tessivo::LtcSignal signal = tessivo::encodeLtc(rate, 24, sampleRate);
                for (float& sample : signal.samples) {
                    sample *= gain;
                }
                // While the width of a cell is being found, two may be missed or misread.
                const std::vector<Frame> found = decodeAll(signal.samples);
                const std::size_t settled = signal.frames.size() - 2;
                REQUIRE(found.size() >= settled);
                CHECK(found.size() <= settled + 2);
                CHECK(text(std::span(found).last(settled)) ==
                      text(std::span(signal.frames).last(settled)));
            }
        }
    }
}

TEST_CASE("timecode is read whatever came before it") {
    const tessivo::LtcSignal signal = tessivo::encodeLtc("25", 30);
    Random random(3);
    std::vector<float> noise(48'000);
    std::ranges::generate(noise, [&] { return random.gaussian(); });
    struct Row {
        std::string name;
        std::vector<float> samples;
        std::size_t mayMiss;
    };
    Row rows[] = {
        {"silence", std::vector<float>(48'000, 0.0F), 10},
        {"a negative level", std::vector<float>(48'000, -0.2F), 10},
        {"noise", noise, 3},
        {"timecode at a rate four times as high", tessivo::encodeLtc("25", 10, 192'000).samples, 3},
    };
    for (Row& row : rows) {
        CAPTURE(row.name);
        row.samples.insert(row.samples.end(), signal.samples.begin(), signal.samples.end());
        // The last ones found are the last ones sent, without a gap.
        const std::vector<Frame> found = decodeAll(row.samples);
        const auto settled = std::span(signal.frames).subspan(row.mayMiss);
        REQUIRE(found.size() >= settled.size());
        CHECK(text(std::span(found).last(settled.size())) == text(settled));
    }
}
