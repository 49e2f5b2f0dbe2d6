#pragma once

#include "base/Instant.h"

namespace tessivo {

/// The only source of time in the core: wall-clock time, which may jump when the computer's clock
/// is set.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Instant now() const = 0;
};

}  // namespace tessivo
