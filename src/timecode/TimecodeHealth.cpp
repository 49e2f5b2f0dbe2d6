#include "timecode/TimecodeHealth.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace tessivo {
namespace {

constexpr double pullDown = 1000.0 / 1001.0;
constexpr double stoppedAfterSeconds = 0.5;
constexpr double jumpIsToldSeconds = 3.0;
/// From one look at it to the next, and some.
constexpr double backwardsIsToldSeconds = 1.0;
/// Enough to tell 29.97 from 30, a thousandth less, by whole samples.
constexpr std::size_t framesToMeasure = 12;
constexpr std::size_t framesKept = 32;
/// How far from 1 the speed may be for the measured rate alone to tell what it counts in.
constexpr double usualSpeed = 0.015;
/// What a gap may be off by, in parts of it, and still be one in the same timecode.
constexpr double driftOfGap = 0.02;
constexpr double longestGapSeconds = 60.0;
constexpr std::int64_t steadyPercent = 95;
constexpr std::int64_t secondsToJudge = 5;
constexpr std::int64_t framesToJudge = 50;
constexpr float fullScale = 0.99F;
constexpr float weakPeak = 0.003F;  // -50 dBFS
constexpr float loudPeak = 0.01F;   // -40 dBFS: more than the noise of an open input

}  // namespace

double TimecodeRate::framesPerSecond() const {
    const auto counted = static_cast<double>(counting.framesPerSecond);
    return isPulledDown ? counted * pullDown : counted;
}

void TimecodeHealth::take(const HeardFrame& heard) {
    const std::optional<std::int64_t> step = last_ ? stepTo(heard) : std::nullopt;
    if (step) {
        learnCounting(heard);
        run_.push_back({heard.end, run_.back().count + *step});
        if (run_.size() > framesKept) {
            run_.pop_front();
        }
    } else {
        if (last_ && heard.end - last_->end < stoppedAfterSeconds) {
            jumpedAt_ = heard.end;
        }
        counting_.reset();
        run_ = {{heard.end, 0}};
    }
    Second& second = secondAt(heard.end);
    ++second.came;
    second.due += step.value_or(1);
    second.filtered += heard.isFiltered ? 1 : 0;
    last_ = heard;
}

// Frames from the last one to this, when it is of the same run: in any counting as long as it isn't
// known, as neighbours, or over a gap.
std::optional<std::int64_t> TimecodeHealth::stepTo(const HeardFrame& heard) const {
    const double elapsed = heard.end - last_->end;
    if (heard.circumstances.dropFrame != last_->circumstances.dropFrame ||
        elapsed > longestGapSeconds) {
        return std::nullopt;
    }
    const std::optional<double> measured = measuredRate();
    for (const std::int64_t framesPerSecond : framesPerSecondInUse) {
        if (counting_ && counting_->framesPerSecond != framesPerSecond) {
            continue;
        }
        const auto step = framesBetween(last_->frame, heard.frame,
                                        {framesPerSecond, heard.circumstances.dropFrame});
        const double due = elapsed * measured.value_or(static_cast<double>(framesPerSecond));
        const bool isNext = heard.circumstances.followsClosely && step == 1;
        if (isNext || (step && *step > 0 &&
                       std::abs(static_cast<double>(*step) - due) <= 0.5 + driftOfGap * due)) {
            return step;
        }
    }
    return std::nullopt;
}

void TimecodeHealth::learnCounting(const HeardFrame& heard) {
    if (heard.circumstances.followsClosely && heard.frame.seconds != last_->frame.seconds) {
        counting_ = {.framesPerSecond = last_->frame.frames + 1,
                     .dropFrame = heard.circumstances.dropFrame};
    }
}

std::optional<double> TimecodeHealth::measuredRate() const {
    if (run_.size() < framesToMeasure) {
        return std::nullopt;
    }
    return static_cast<double>(run_.back().count - run_.front().count) /
           (run_.back().end - run_.front().end);
}

std::optional<TimecodeRate> TimecodeHealth::rate() const {
    const std::optional<double> measured = measuredRate();
    if (!measured) {
        return std::nullopt;
    }
    std::optional<TimecodeCounting> counting = counting_;
    for (const std::int64_t framesPerSecond : framesPerSecondInUse) {
        if (!counting &&
            std::abs(*measured / static_cast<double>(framesPerSecond) - 1.0) < usualSpeed) {
            counting = {framesPerSecond, last_->circumstances.dropFrame};
        }
    }
    if (!counting) {
        return std::nullopt;
    }
    const TimecodeRate plain{*counting, false}, pulledDown{*counting, true};
    const bool isNearer = std::abs(*measured - pulledDown.framesPerSecond()) <
                          std::abs(*measured - plain.framesPerSecond());
    return isNearer && counting->framesPerSecond != 25 ? pulledDown : plain;
}

TimecodeHealth::Second& TimecodeHealth::secondAt(double time) {
    const auto number = static_cast<std::int64_t>(time);
    Second& second = minute_[static_cast<std::size_t>(number) % minute_.size()];
    if (second.number != number) {
        second = {.number = number};
    }
    return second;
}

void TimecodeHealth::hear(float peak, double now) {
    Second& second = secondAt(now);
    second.peak = std::max(second.peak, peak);
}

TimecodeHealth::Second TimecodeHealth::sumOfLast(std::int64_t seconds, double now) const {
    Second sum;
    for (const Second& second : minute_) {
        if (second.number >= 0 && second.number >= static_cast<std::int64_t>(now) - seconds) {
            sum.came += second.came;
            sum.due += second.due;
            sum.filtered += second.filtered;
            sum.peak = std::max(sum.peak, second.peak);
        }
    }
    return sum;
}

TimecodeHealth::Reading TimecodeHealth::reading(double now) const {
    Reading reading;
    const bool isForwards = last_ && last_->end > backwardsAt_;
    if (!isForwards && now - backwardsAt_ < backwardsIsToldSeconds) {
        reading.motion = Motion::backwards;
    } else if (last_) {
        reading.motion = now - last_->end > stoppedAfterSeconds ? Motion::stopped
                         : now - jumpedAt_ < jumpIsToldSeconds  ? Motion::jumped
                                                                : Motion::running;
        reading.rate = rate();
    }
    if (reading.rate) {
        reading.speed = *measuredRate() / reading.rate->framesPerSecond();
    }
    const Second minute = sumOfLast(std::ssize(minute_), now);
    reading.came = minute.came;
    reading.due = minute.due;
    reading.peak = sumOfLast(1, now).peak;
    reading.advice = advice(reading, now);
    return reading;
}

LineAdvice TimecodeHealth::advice(const Reading& reading, double now) const {
    const Second recent = sumOfLast(secondsToJudge, now);
    if (reading.motion == Motion::backwards) {
        return LineAdvice::none;
    }
    if (recent.came == 0) {
        const auto isLoud = [&](const Second& second) {
            return second.number >= static_cast<std::int64_t>(now) - secondsToJudge &&
                   second.peak >= loudPeak;
        };
        return std::ranges::count_if(minute_, isLoud) >= secondsToJudge ? LineAdvice::noTimecode
                                                                        : LineAdvice::none;
    }
    const bool isUnsteady =
        recent.due >= framesToJudge && recent.came * 100 < recent.due * steadyPercent;
    if (reading.motion == Motion::stopped) {
        return LineAdvice::none;
    }
    if (isUnsteady && recent.peak >= fullScale) {
        return LineAdvice::clipped;
    }
    if (recent.filtered * 2 > recent.came) {
        return LineAdvice::hum;
    }
    if (reading.peak < weakPeak) {
        return LineAdvice::weak;
    }
    return isUnsteady ? LineAdvice::unsteady : LineAdvice::none;
}

}  // namespace tessivo
