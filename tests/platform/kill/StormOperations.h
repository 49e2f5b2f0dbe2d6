#pragma once

#include "state/AppState.h"
#include "support/RandomRecords.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessivo::test {

/// The number of the last operation of a storm, read from what it left: the cursor holds it, or
/// after an import, which puts the cursor to the start, the name of the imported show.
inline std::int64_t lastStormOperation(const std::vector<Show>& shows, std::int64_t cursor) {
    return cursor > 0 || shows.empty() ? cursor : std::stoll(shows.back().name);
}

/// The `number`th operation on a state that began empty, counted from 1. It depends on nothing but
/// its number and the state, so that whoever counts along knows what must have been kept.
inline void runStormOperation(AppState& state, std::int64_t number) {
    constexpr std::size_t mostShows = 20;
    if (number % 10 != 1 || state.shows().size() == mostShows) {
        state.jumpTo(number);
        return;
    }
    RandomRecords random(static_cast<std::uint64_t>(number));
    Show show = random.show();
    show.name = std::to_string(number);
    state.importShow(std::move(show));
}

}  // namespace tessivo::test
