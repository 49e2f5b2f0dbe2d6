#pragma once

#include "base/Signal.h"

#include <cstddef>

namespace tessivo {

class AdminBroadcaster;
class Clock;
class Journal;

/// Writes into the journal which stations come to a broadcast and leave it.
class StationJournal {
public:
    /// All outlive this.
    StationJournal(AdminBroadcaster& broadcaster, const Clock& clock, Journal& journal);

private:
    std::size_t count_;
    Subscription changes_;
};

}  // namespace tessivo
