#pragma once

#include "model/Show.h"
#include "support/RandomRecords.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tessivo::test {

constexpr const char* stormKey = "record";

/// The `number`th change of a library that began empty, counted from 1. It depends on nothing but
/// its number and the library, so that whoever counts along knows what must have been kept.
inline void applyStormOperation(std::vector<Show>& shows, std::int64_t number) {
    RandomRecords random(static_cast<std::uint64_t>(number));
    constexpr std::size_t mostShows = 20;
    constexpr std::size_t mostSongs = 40;
    const std::size_t choice = random.below(10);
    if (shows.empty() || (choice == 0 && shows.size() < mostShows)) {
        shows.push_back(random.show());
        return;
    }
    const std::size_t position = random.below(shows.size());
    Show& show = shows[position];
    if (choice == 1 && shows.size() == mostShows) {
        shows.erase(shows.begin() + static_cast<std::ptrdiff_t>(position));
    } else if (choice < 5 && show.songs.size() < mostSongs) {
        show.songs.push_back(random.song());
    } else {
        show.name = "Show " + std::to_string(number) + random.text();
    }
}

}  // namespace tessivo::test
