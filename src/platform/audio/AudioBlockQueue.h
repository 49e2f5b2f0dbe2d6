#pragma once

#include "platform/AudioInput.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessivo {

/// Carries the blocks of one capture from the audio thread to another one, in order. All
/// storage is allocated and touched at construction; no call takes a lock, waits or allocates. It
/// holds at least one second of audio in blocks of 16 frames (the smallest that audio systems use)
/// or more; when its reader stands still for longer, the newest blocks are dropped, and the
/// next one that finds room says how much is missing before it.
class AudioBlockQueue {
public:
    /// At least one channel; `sampleRate` in samples per second. A rate that no device has counts
    /// as 48 kHz: it only decides how much fits.
    AudioBlockQueue(std::size_t channelCount, double sampleRate);

    /// Copies `block`, which must have the queue's number of channels; false when it was dropped
    /// because the queue is full. Audio thread only.
    bool push(const AudioBlock& block) noexcept;

    /// The oldest block, good until `pop`; nothing when the queue is empty. Reading thread only.
    std::optional<AudioBlock> front() noexcept;
    /// Gives the storage of the oldest block back; the queue must not be empty. Reading thread
    /// only.
    void pop() noexcept;

private:
    // Positions in the sample ring count up for ever. A block never wraps: what is left at the
    // ring's end is skipped when it doesn't fit there.
    struct Entry {
        std::uint64_t begin = 0;
        std::size_t frameCount = 0;
        double sampleRate = 0.0;
        LostAudio lostBefore;
    };

    const Entry& entry(std::uint64_t number) const { return entries_[number % entries_.size()]; }
    std::optional<std::uint64_t> placeFor(std::size_t sampleCount,
                                          std::uint64_t oldest) const noexcept;

    const std::size_t channelCount_;
    std::vector<float> ring_;
    std::vector<Entry> entries_;
    std::vector<const float*> frontChannels_;  // of the block that `front` gave last

    // Producer and consumer write on cache lines of their own.
    alignas(64) std::atomic<std::uint64_t> pushedCount_{0};
    std::uint64_t nextPosition_ = 0;  // producer only
    LostAudio lost_;                  // producer only: since the last block that found room
    alignas(64) std::atomic<std::uint64_t> poppedCount_{0};
};

}  // namespace tessivo
