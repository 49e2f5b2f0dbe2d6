#pragma once

#include "base/Moment.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace tessivo {

class Clock;

/// Turns the samples of one audio channel into frames of linear timecode (SMPTE ST 12-1, clause on
/// the modulation method: biphase mark). It knows neither the sample rate nor the frame rate: it
/// follows the width of a bit cell from the distances between sign changes, so timecode at any
/// playing speed that changes slowly is read. Only forward timecode is recognised.
///
/// There is one decoder for the life of its owner. Its state carries over when the source changes;
/// the estimate of the cell width adapts by itself. Main thread only.
class LtcBiphaseDecoder {
public:
    struct Frame {
        std::int64_t hours = 0;    ///< 0 to 23
        std::int64_t minutes = 0;  ///< 0 to 59
        std::int64_t seconds = 0;  ///< 0 to 59
        std::int64_t frames = 0;   ///< 0 to 29
        std::int64_t fps = 25;     ///< always 25: the frame rate isn't measured

        friend bool operator==(const Frame&, const Frame&) = default;
    };

    explicit LtcBiphaseDecoder(const Clock& clock) : clock_(clock) {}

    /// Takes the next sample; gives the frame that this sample completed. A value that isn't a
    /// number counts as negative, both zeros as positive: any change of sign is an edge.
    std::optional<Frame> feedSample(float sample);

    /// Takes samples off the front, as `feedSample` would, up to the one that completes a frame,
    /// and gives that frame; takes all and gives nothing when none does.
    std::optional<Frame> takeUntilFrame(std::span<const float>& samples);

    /// Takes `samples` in order and calls `onFrame` with each frame before it takes the sample that
    /// follows the frame.
    template <typename OnFrame>
    void feed(std::span<const float> samples, OnFrame&& onFrame) {
        while (const std::optional<Frame> frame = takeUntilFrame(samples)) {
            onFrame(*frame);
        }
    }

    /// What else is known of the last frame.
    struct Circumstances {
        bool followsClosely = false;  ///< its 80 bits came straight after the frame before
        bool dropFrame = false;       ///< its drop-frame flag
    };
    const Circumstances& lastFrame() const { return lastFrame_; }

    /// When the last frame was decoded; the distant past before the first one.
    Moment lastValidFrameTime() const { return lastValidFrameTime_; }

private:
    /// The most recent bits of the signal, as many as one frame has. Bit 0 of `fields` is the
    /// oldest; in a whole frame every bit then has its number in the standard's table.
    struct BitBuffer {
        std::uint64_t fields = 0;      ///< bits 0 to 63 of the frame
        std::uint16_t syncWord = 0;    ///< bits 64 to 79
        std::uint32_t validCount = 0;  ///< how many arrived since the last frame, 81 for more
    };

    /// What is known of the signal so far. Small enough to be kept in registers over a block.
    struct Signal {
        bool lastSampleNegative = false;
        bool lastEdgeWasHalfBit = false;  ///< half of a one was seen, its other half is awaited
        std::int64_t samplesSinceLastEdge = 0;
        float nominalCellWidth = 0.0F;  ///< one bit cell, in samples; 0 before any edge
        BitBuffer bits;

        bool takeEdge();
        void appendBit(unsigned bit);
    };

    std::optional<Frame> takeFrame();
    static std::optional<Frame> decodeFrameBits(std::uint64_t fields);

    const Clock& clock_;
    Moment lastValidFrameTime_ = Moment::distantPast();
    Circumstances lastFrame_;
    Signal signal_;
};

}  // namespace tessivo
