#pragma once

#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/TimecodeLock.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tessivo {

/// Decodes timecode from a line that can't be trusted. A first-order high-pass takes away what
/// lies below the timecode: on slow edges, hum and offset move the sign changes until nothing can
/// be read. Then a `TimecodeLock` lets only those frames through that confirm each other. Main
/// thread only.
class CarefulDecoder {
public:
    explicit CarefulDecoder(const Clock& clock) : decoder_(clock) {}

    /// Takes `samples` in order, `sampleRate` of them per second, and calls `onFrame` with each
    /// confirmed frame as a `HeardFrame`.
    template <typename OnFrame>
    void feed(std::span<const float> samples, double sampleRate, OnFrame&& onFrame) {
        std::span<const float> rest = highPass(samples, sampleRate);
        const double start = heardSeconds_;
        while (const auto frame = decoder_.takeUntilFrame(rest)) {
            const auto taken = static_cast<double>(samples.size() - rest.size());
            const HeardFrame heard{*frame, decoder_.lastFrame(), start + taken / sampleRate};
            if (lock_.confirms(heard)) {
                onFrame(heard);
            }
        }
        heardSeconds_ = start + static_cast<double>(samples.size()) / sampleRate;
    }

    /// How much audio was taken so far, in seconds.
    double heardSeconds() const { return heardSeconds_; }

private:
    std::span<const float> highPass(std::span<const float> samples, double sampleRate);

    LtcBiphaseDecoder decoder_;
    TimecodeLock lock_;
    double heardSeconds_ = 0.0;
    float lastInput_ = 0.0F;
    float lastOutput_ = 0.0F;
    std::vector<float> filtered_;
};

}  // namespace tessivo
