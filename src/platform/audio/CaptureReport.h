#pragma once

#include "platform/AudioInput.h"

#include <cstdint>

namespace tessivo {

// What the audio program writes while it captures. Both ends are of one build, so these cross the
// pipe as they are: one report before each step, so that it is known which one hangs; then either
// the report of the step that failed, or the one that the device is open. From then on blocks, each
// a head and its samples as 32-bit floats, channel by channel.

struct CaptureReport {
    AudioStep step{};
    AudioStatus status = audioSuccess;
    bool isOpen = false;
    AudioStreamFormat format{};  ///< once open
};

struct CapturedBlockHead {
    std::uint64_t frameCount = 0;
    LostAudio lostBefore{};
};

}  // namespace tessivo
