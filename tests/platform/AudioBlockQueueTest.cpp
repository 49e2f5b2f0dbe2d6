#include "platform/audio/AudioBlockQueue.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <limits>
#include <vector>

using tessivo::AudioBlock;
using tessivo::AudioBlockQueue;

namespace {

/// Makes blocks whose samples tell their number and channel; each is good until the next.
struct Source {
    explicit Source(std::size_t channelCount) : samples(channelCount), starts(channelCount) {}

    AudioBlock block(std::size_t number, std::size_t frameCount) {
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            samples[channel].assign(frameCount, static_cast<float>(number * 64 + channel));
            starts[channel] = samples[channel].data();
        }
        return {starts, frameCount, 48'000.0};
    }
    bool made(const AudioBlock& block, std::size_t number) {
        bool isSame = block.channels.size() == samples.size();
        for (std::size_t channel = 0; isSame && channel < samples.size(); ++channel) {
            const auto expected = static_cast<float>(number * 64 + channel);
            isSame = std::ranges::count(block.channel(channel), expected) ==
                     std::ssize(block.channel(channel));
        }
        return isSame;
    }

    std::vector<std::vector<float>> samples;
    std::vector<const float*> starts;
};

}  // namespace

TEST_CASE("the queue holds a second of audio, drops the newest beyond, and tells how much") {
    struct Row {
        std::size_t channelCount;
        double sampleRate;
        std::size_t frameCount, leastHeld;
    };
    const Row rows[] = {
        {1, 48'000.0, 16, 3000},  {64, 48'000.0, 512, 94},
        {2, 192'000.0, 8192, 23}, {3, 48'000.0, 4095, 12},
        {1, 0.0, 512, 94},        {1, std::numeric_limits<double>::quiet_NaN(), 512, 94},
    };
    for (const Row& row : rows) {
        CAPTURE(row.channelCount);
        CAPTURE(row.sampleRate);
        AudioBlockQueue queue(row.channelCount, row.sampleRate);
        Source source(row.channelCount);
        std::size_t first = 0, pushed = 0;
        for (std::size_t lost = 0; lost < 3; ++lost) {  // blocks, before the round's first one
            const std::size_t start = first;
            while (queue.push(source.block(pushed, row.frameCount))) {
                ++pushed;
            }
            for (std::size_t more = 0; more < lost; ++more) {
                CHECK_FALSE(queue.push(source.block(pushed, row.frameCount)));
            }
            CHECK(pushed - start >= row.leastHeld);
            for (; first < pushed; ++first) {
                const auto front = queue.front();
                REQUIRE(front);
                REQUIRE(front->frameCount == row.frameCount);
                REQUIRE(source.made(*front, first));
                REQUIRE(front->lostBefore.blocks == (first == start ? lost : 0));
                REQUIRE(front->lostBefore.frames == front->lostBefore.blocks * row.frameCount);
                queue.pop();
            }
            CHECK_FALSE(queue.front());
        }
    }
    AudioBlockQueue queue(1, 8'000.0);
    CHECK_FALSE(queue.push(Source(1).block(0, 100'000)));  // longer than the whole queue
    CHECK(queue.push(Source(1).block(0, 9'000)));
}
