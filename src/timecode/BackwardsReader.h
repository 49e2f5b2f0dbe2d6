#pragma once

#include <span>
#include <vector>

namespace tessivo {

class Clock;

/// Recognises timecode that is played backwards, as while a tape is wound or a player scrubs: heard
/// from its end, it runs forwards. Main thread only.
class BackwardsReader {
public:
    explicit BackwardsReader(const Clock& clock) : clock_(clock) {}

    /// Takes a block in which no timecode ran forwards, `sampleRate` samples per second. Gives
    /// whether the half second that ends with it was timecode played backwards; in between, no.
    bool take(std::span<const float> samples, double sampleRate);
    /// Timecode runs forwards: what was taken so far is no part of what comes.
    void forget() { heard_.clear(); }

private:
    const Clock& clock_;
    std::vector<float> heard_;
};

}  // namespace tessivo
