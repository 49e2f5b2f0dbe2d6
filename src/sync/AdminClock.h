#pragma once

#include "base/Instant.h"
#include "base/Moment.h"

#include <optional>

namespace tessivo {

/// The admin's clock as a station learns it, from nothing but when new songs start: a start that
/// the station didn't know yet was the admin's present as it set out. Since the network only
/// delays, the start that seems the least late tells most. Moments are the station's.
class AdminClock {
public:
    /// A live state arrived whose song started at `startedAt`.
    void hear(Instant startedAt, Moment moment);
    /// What comes next comes by another connection, and may have started at any time before.
    void reconnect();

    /// What the admin's clock shows at this moment; none before a start was heard.
    std::optional<Instant> at(Moment moment) const;

private:
    void learn(double lead, Moment moment);

    std::optional<Instant> lastStart_;  // on this connection
    Moment heardAt_;
    Moment promptSince_;          // from when on messages come as they are sent
    std::optional<double> lead_;  // of the admin's clock over the moment's seconds
    Moment learntAt_;
};

}  // namespace tessivo
