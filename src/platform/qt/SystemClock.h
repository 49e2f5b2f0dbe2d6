#pragma once

#include "platform/Clock.h"

namespace tessivo {

/// The computer's own clocks.
class SystemClock final : public Clock {
public:
    Instant now() const override;
    Moment moment() const override;
};

}  // namespace tessivo
