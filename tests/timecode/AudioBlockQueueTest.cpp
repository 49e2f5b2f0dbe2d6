#include "timecode/AudioBlockQueue.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

using tessivo::AudioBlock;
using tessivo::AudioBlockQueue;

namespace {

constexpr std::size_t distance = 4096;  // the storage is wider than the blocks

float value(std::uint64_t number, std::size_t channel, std::size_t index) {
    return static_cast<float>((number * 7 + channel * 3 + index) % 65'536);
}

/// A block, in the given storage, whose samples tell its number and channel.
AudioBlock makeBlock(std::vector<float>& storage, std::uint64_t number, std::size_t channelCount,
                     std::size_t frameCount) {
    storage.resize(channelCount * distance);
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < frameCount; ++i) {
            storage[channel * distance + i] = value(number, channel, i);
        }
    }
    return {storage.data(), distance, channelCount, frameCount, 48'000.0};
}

bool isBlock(const AudioBlock& block, std::uint64_t number, std::size_t channelCount) {
    bool isSame = block.channelCount == channelCount;
    for (std::size_t channel = 0; isSame && channel < channelCount; ++channel) {
        for (std::size_t i = 0; i < block.frameCount; ++i) {
            isSame = isSame && block.channel(channel)[i] == value(number, channel, i);
        }
    }
    return isSame;
}

}  // namespace

TEST_CASE("the queue holds a second of audio, drops the newest beyond, and goes on when drained") {
    struct Row {
        std::size_t channelCount;
        double sampleRate;
        std::size_t frameCount;
        std::uint64_t leastHeld;
    };
    const Row rows[] = {
        {1, 48'000.0, 16, 3000},  {64, 48'000.0, 512, 94},
        {2, 192'000.0, 4096, 47}, {3, 48'000.0, 4095, 12},
        {1, 0.0, 512, 94},        {1, std::numeric_limits<double>::quiet_NaN(), 512, 94},
    };
    for (const Row& row : rows) {
        CAPTURE(row.channelCount);
        CAPTURE(row.sampleRate);
        AudioBlockQueue queue(row.channelCount, row.sampleRate);
        std::vector<float> storage;
        std::uint64_t first = 0, pushed = 0, dropped = 0;
        for (int round = 0; round < 3; ++round) {
            while (pushed - first < row.leastHeld * 2 &&
                   queue.push(makeBlock(storage, pushed, row.channelCount, row.frameCount))) {
                ++pushed;
            }
            CHECK(queue.droppedCount() == ++dropped);
            CHECK(pushed - first >= row.leastHeld);
            for (; first < pushed; ++first) {
                const auto block = queue.front();
                REQUIRE(block);
                REQUIRE(block->frameCount == row.frameCount);
                REQUIRE(isBlock(*block, first, row.channelCount));
                queue.pop();
            }
            CHECK_FALSE(queue.front());
        }
    }
}

TEST_CASE("two threads hand blocks over without a lock") {
    constexpr std::size_t channelCount = 2;
    constexpr std::uint64_t blockCount = 20'000;
    AudioBlockQueue queue(channelCount, 8'000.0);
    std::atomic<bool> finished = false;
    std::thread producer([&] {
        std::vector<float> storage;
        tessivo::Random random(5);
        for (std::uint64_t number = 0; number < blockCount;) {
            const std::size_t length = random.below(100) == 0 ? 4096 : random.below(300);
            if (queue.push(makeBlock(storage, number, channelCount, length))) {
                ++number;
            } else {
                std::this_thread::yield();
            }
        }
        finished = true;
    });
    std::uint64_t taken = 0;
    bool intact = true;
    while (true) {
        const bool wasFinished = finished;
        if (const auto block = queue.front()) {
            intact = isBlock(*block, taken++, channelCount) && intact;
            queue.pop();
        } else if (wasFinished) {
            break;
        } else {
            std::this_thread::yield();
        }
    }
    producer.join();
    CHECK(taken == blockCount);
    CHECK(intact);
}
