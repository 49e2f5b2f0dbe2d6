#pragma once

#include "base/Instant.h"

#include <optional>

namespace tessivo {

/// The admin's clock as a station learns it, from nothing but when new songs start: a start that
/// the station didn't know yet was the admin's present as it set out. Since the network only
/// delays, the start that seems the least late tells most. Uptimes are the station's, in seconds.
class AdminClock {
public:
    /// A live state arrived whose song started at `startedAt`.
    void hear(Instant startedAt, double uptime);
    /// What comes next comes by another connection, and may have started at any time before.
    void reconnect();

    /// What the admin's clock shows at this uptime; none before a start was heard.
    std::optional<Instant> at(double uptime) const;

private:
    void learn(double lead, double uptime);

    std::optional<Instant> lastStart_;  // on this connection
    double heardAt_ = 0.0;
    double promptSince_ = 0.0;    // from when on messages come as they are sent
    std::optional<double> lead_;  // of the admin's clock over the uptime
    double learntAt_ = 0.0;
};

}  // namespace tessivo
