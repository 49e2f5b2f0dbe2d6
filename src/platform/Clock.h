#pragma once

#include "base/Instant.h"

namespace tessivo {

/// The only source of time in the core.
class Clock {
public:
    virtual ~Clock() = default;
    /// Wall-clock time, which jumps when the computer's clock is set.
    virtual Instant now() const = 0;
    /// Seconds since a moment before the program began. Nobody sets it, and it goes on while the
    /// computer sleeps.
    virtual double uptime() const = 0;
};

}  // namespace tessivo
