#pragma once

#include "platform/AudioInput.h"
#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/TimecodeLock.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tessivo {

/// Looks for timecode on all channels of a capture. Main thread only.
class ChannelSearch {
public:
    explicit ChannelSearch(const Clock& clock) : clock_(clock) {}

    /// Takes a block whose channels have these levels, and gives the channel that carried confirmed
    /// timecode within the last second: the loudest one, because others may only have its
    /// crosstalk.
    std::optional<std::size_t> search(const AudioBlock& block, std::span<const float> levels);

private:
    struct Channel {
        explicit Channel(const Clock& clock) : decoder(clock) {}

        LtcBiphaseDecoder decoder;
        TimecodeLock lock;
        double confirmedAt = -1e9;
    };

    const Clock& clock_;
    std::vector<Channel> channels_;
    double heardSeconds_ = 0.0;
};

}  // namespace tessivo
