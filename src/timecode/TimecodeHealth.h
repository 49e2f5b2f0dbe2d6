#pragma once

#include "timecode/TimecodeLock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

namespace tessivo {

/// What timecode counts in and how fast that should pass.
struct TimecodeRate {
    TimecodeCounting counting;
    bool isPulledDown = false;  ///< by 1000/1001, as beside NTSC video: 29.97 for 30

    double framesPerSecond() const;

    friend bool operator==(const TimecodeRate&, const TimecodeRate&) = default;
};

/// What an operator should look at first.
enum class LineAdvice {
    none,
    weak,        ///< read, but near the end of what an input gives
    clipped,     ///< at full scale, with frames missing
    hum,         ///< only read behind the high-pass
    unsteady,    ///< frames missing
    noTimecode,  ///< something sounds, but not timecode: music, or the wrong channel
};

/// How the timecode of a line is doing, from its confirmed frames alone: of timecode, noise and
/// music show nothing. All times are seconds of audio heard, as in `HeardFrame`.
class TimecodeHealth {
public:
    enum class Motion { running, stopped, jumped, backwards };

    struct Reading {
        std::optional<Motion> motion;  ///< none before the first sign of timecode
        /// Known after half a second at usual speed, else with the first change of the second; not
        /// of timecode that runs backwards.
        std::optional<TimecodeRate> rate;
        double speed = 1.0;     ///< 1 for the rate's own; only with a rate
        std::int64_t came = 0;  ///< frames of the last minute
        std::int64_t due = 0;   ///< frames that the timecode counted in it; stops aren't due
        float peak = 0.0F;      ///< of the last second or two, linear
        LineAdvice advice = LineAdvice::none;
    };

    /// Takes the next confirmed frame.
    void take(const HeardFrame& heard);
    /// Timecode ran backwards up to `now`.
    void takeBackwards(double now) { backwardsAt_ = now; }
    /// Takes the level of a block that ended at `now`.
    void hear(float peak, double now);
    Reading reading(double now) const;

private:
    struct Second {
        std::int64_t number = -1;
        std::int64_t came = 0;
        std::int64_t due = 0;
        std::int64_t filtered = 0;
        float peak = 0.0F;
    };
    /// A frame of the present run: when it ended, and how many the timecode counted up to it.
    struct Mark {
        double end = 0.0;
        std::int64_t count = 0;
    };

    std::optional<double> measuredRate() const;
    std::optional<TimecodeRate> rate() const;
    std::optional<std::int64_t> stepTo(const HeardFrame& heard) const;
    void learnCounting(const HeardFrame& heard);
    Second& secondAt(double time);
    LineAdvice advice(const Reading& reading, double now) const;
    /// Sums up the last `seconds` whole ones and the present one.
    Second sumOfLast(std::int64_t seconds, double now) const;

    std::optional<HeardFrame> last_;
    std::optional<TimecodeCounting> counting_;  ///< told by a change of the second
    std::deque<Mark> run_;
    double jumpedAt_ = -1e9;
    double backwardsAt_ = -1e9;
    std::array<Second, 60> minute_;
};

}  // namespace tessivo
