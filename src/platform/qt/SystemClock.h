#pragma once

#include "platform/Clock.h"

namespace tessivo {

/// The computer's own clock.
class SystemClock final : public Clock {
public:
    Instant now() const override;
    double uptime() const override;
};

}  // namespace tessivo
