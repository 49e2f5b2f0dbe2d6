#include "platform/audio/AudioBlockQueue.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace tessivo {

namespace {

// Frames in one block. A longer one is carried too, if it fits, but takes from the second.
constexpr std::size_t smallestBlock = 16, longestBlock = 8192;

std::size_t framesPerSecond(double sampleRate) {
    const bool plausible = sampleRate >= 1'000.0 && sampleRate <= 1'000'000.0;
    return static_cast<std::size_t>(std::ceil(plausible ? sampleRate : 48'000.0));
}

// One second, and the longest stretch that can be left unused at the ring's end.
std::size_t ringFrames(double sampleRate) {
    return framesPerSecond(sampleRate) + 2 * longestBlock;
}

}  // namespace

AudioBlockQueue::AudioBlockQueue(std::size_t channelCount, double sampleRate)
    : channelCount_(channelCount),
      ring_(channelCount * ringFrames(sampleRate)),
      entries_(framesPerSecond(sampleRate) / smallestBlock + 1),
      frontChannels_(channelCount) {
    assert(channelCount >= 1);
}

// Where `sampleCount` samples in one piece can be written, if there is room for them in front of
// the oldest position that is still to be read.
std::optional<std::uint64_t> AudioBlockQueue::placeFor(std::size_t sampleCount,
                                                       std::uint64_t oldest) const noexcept {
    assert(oldest <= nextPosition_ && nextPosition_ - oldest <= ring_.size());
    const std::size_t leftAtEnd = ring_.size() - nextPosition_ % ring_.size();
    const std::uint64_t begin = nextPosition_ + (sampleCount > leftAtEnd ? leftAtEnd : 0);
    if (begin + sampleCount - oldest > ring_.size()) {
        return std::nullopt;
    }
    return begin;
}

bool AudioBlockQueue::push(const AudioBlock& block) noexcept {
    assert(block.channels.size() == channelCount_);
    const std::uint64_t number = pushedCount_.load(std::memory_order_relaxed);
    const std::uint64_t popped = poppedCount_.load(std::memory_order_acquire);
    assert(popped <= number && number - popped <= entries_.size());
    const std::uint64_t oldest = popped == number ? nextPosition_ : entry(popped).begin;
    const std::size_t sampleCount = channelCount_ * block.frameCount;
    const std::optional<std::uint64_t> begin = placeFor(sampleCount, oldest);
    if (!begin || number - popped == entries_.size()) {
        ++lost_.blocks;
        lost_.frames += block.frameCount;
        return false;
    }
    float* place = ring_.data() + *begin % ring_.size();
    for (std::size_t channel = 0; channel < channelCount_; ++channel) {
        place = std::ranges::copy(block.channel(channel), place).out;
    }
    entries_[number % entries_.size()] = {*begin, block.frameCount, block.sampleRate,
                                          std::exchange(lost_, {})};
    nextPosition_ = *begin + sampleCount;
    pushedCount_.store(number + 1, std::memory_order_release);
    return true;
}

std::optional<AudioBlock> AudioBlockQueue::front() noexcept {
    const std::uint64_t number = poppedCount_.load(std::memory_order_relaxed);
    if (number == pushedCount_.load(std::memory_order_acquire)) {
        return std::nullopt;
    }
    const Entry& oldest = entry(number);
    const float* start = ring_.data() + oldest.begin % ring_.size();
    for (const float*& channel : frontChannels_) {
        channel = std::exchange(start, start + oldest.frameCount);
    }
    return AudioBlock{frontChannels_, oldest.frameCount, oldest.sampleRate, oldest.lostBefore};
}

void AudioBlockQueue::pop() noexcept {
    const std::uint64_t number = poppedCount_.load(std::memory_order_relaxed);
    assert(number != pushedCount_.load(std::memory_order_acquire));
    poppedCount_.store(number + 1, std::memory_order_release);
}

}  // namespace tessivo
