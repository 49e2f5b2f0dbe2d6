#pragma once

#include "base/Signal.h"
#include "live/HandOvers.h"
#include "state/AppState.h"

namespace tessivo {

/// Where the equipment of the show at hand goes, worked out once after each change of the shows for
/// all screens that tell of it: a typed letter waits for that. Main thread only.
class ShowHandOvers {
public:
    explicit ShowHandOvers(AppState& state);

    /// Those of a show of the state, good until the shows change.
    const HandOvers& of(const Show& show);

private:
    void forget(AppState::Field field);

    const Show* show_ = nullptr;  ///< that `handOvers_` are of; null when they are out of date
    HandOvers handOvers_;
    // The cursor may be told to have moved while the shows are changing.
    Subscription before_;
    Subscription after_;
};

}  // namespace tessivo
