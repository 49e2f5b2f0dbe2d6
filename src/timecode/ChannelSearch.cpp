#include "timecode/ChannelSearch.h"

namespace tessivo {
namespace {

/// A channel that had a confirmed frame since then carries timecode.
constexpr double recentSeconds = 1.0;

}  // namespace

std::optional<std::size_t> ChannelSearch::search(const AudioBlock& block,
                                                 std::span<const float> levels) {
    while (channels_.size() < block.channels.size()) {
        channels_.emplace_back(clock_);
    }
    std::optional<std::size_t> loudest;
    for (std::size_t i = 0; i < block.channels.size(); ++i) {
        Channel& channel = channels_[i];
        std::span<const float> rest = block.channel(i);
        while (const auto frame = channel.decoder.takeUntilFrame(rest)) {
            const auto taken = static_cast<double>(block.frameCount - rest.size());
            const HeardFrame heard{*frame, channel.decoder.lastFrame(),
                                   heardSeconds_ + taken / block.sampleRate};
            if (channel.lock.confirms(heard)) {
                channel.confirmedAt = heard.end;
            }
        }
        if (heardSeconds_ - channel.confirmedAt < recentSeconds &&
            (!loudest || levels[i] > levels[*loudest])) {
            loudest = i;
        }
    }
    heardSeconds_ += static_cast<double>(block.frameCount) / block.sampleRate;
    return loudest;
}

}  // namespace tessivo
