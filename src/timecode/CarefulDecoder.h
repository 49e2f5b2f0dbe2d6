#pragma once

#include "timecode/LtcBiphaseDecoder.h"
#include "timecode/TimecodeLock.h"

#include <span>
#include <vector>

namespace tessivo {

/// Decodes timecode from a line that can't be trusted: only frames that confirm each other come
/// out, as `TimecodeLock` has it. They are read from the samples as they are and once more behind a
/// first-order high-pass. On slow edges, hum and offset move the sign changes until nothing can be
/// read without it; in noise, more is read without it, because it bends the signal towards zero.
/// Main thread only.
class CarefulDecoder {
public:
    explicit CarefulDecoder(const Clock& clock) : straight_(clock), filtered_(clock) {}

    /// Takes `samples` in order, `sampleRate` of them per second, and calls `onFrame` with each
    /// confirmed frame as a `HeardFrame`.
    template <typename OnFrame>
    void feed(std::span<const float> samples, double sampleRate, OnFrame&& onFrame) {
        feed(straight_, samples, sampleRate, onFrame);
        feed(filtered_, highPass(samples, sampleRate), sampleRate, onFrame);
        heardSeconds_ += static_cast<double>(samples.size()) / sampleRate;
    }

    /// How much audio was taken so far, in seconds.
    double heardSeconds() const { return heardSeconds_; }

private:
    /// One way of reading the samples.
    struct Way {
        explicit Way(const Clock& clock) : decoder(clock) {}

        LtcBiphaseDecoder decoder;
        TimecodeLock lock;
    };

    /// Less than half of a frame at any speed: what comes so close to another frame is the same.
    static constexpr double sameFrameSeconds = 0.004;

    template <typename OnFrame>
    void feed(Way& way, std::span<const float> samples, double sampleRate, OnFrame&& onFrame) {
        std::span<const float> rest = samples;
        while (const auto frame = way.decoder.takeUntilFrame(rest)) {
            const auto taken = static_cast<double>(samples.size() - rest.size());
            const HeardFrame heard{*frame, way.decoder.lastFrame(),
                                   heardSeconds_ + taken / sampleRate, &way == &filtered_};
            if (way.lock.confirms(heard) && heard.end > lastEnd_ + sameFrameSeconds) {
                lastEnd_ = heard.end;
                onFrame(heard);
            }
        }
    }
    std::span<const float> highPass(std::span<const float> samples, double sampleRate);

    Way straight_;
    Way filtered_;
    double heardSeconds_ = 0.0;
    double lastEnd_ = 0.0;
    float lastInput_ = 0.0F;
    float lastOutput_ = 0.0F;
    std::vector<float> buffer_;
};

}  // namespace tessivo
