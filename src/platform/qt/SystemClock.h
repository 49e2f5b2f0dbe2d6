#pragma once

#include "platform/Clock.h"

namespace tessivo {

/// The computer's own wall clock.
class SystemClock final : public Clock {
public:
    Instant now() const override;
};

}  // namespace tessivo
