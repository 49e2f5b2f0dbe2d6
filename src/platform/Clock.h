#pragma once

#include "base/Instant.h"
#include "base/Moment.h"

namespace tessivo {

/// The only source of time in the core.
class Clock {
public:
    virtual ~Clock() = default;

    /// Wall-clock time, which other computers share and people read. It jumps when the computer's
    /// clock is set, so nothing is timed by it.
    virtual Instant now() const = 0;

    /// Goes forward with real time, asleep or awake, whatever is done to the wall clock.
    virtual Moment moment() const = 0;
};

}  // namespace tessivo
