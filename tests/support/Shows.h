#pragma once

#include "model/Show.h"

#include <cstddef>
#include <string>

namespace tessivo {

/// A show of `count` songs titled "Morceau 1" and so on, without guests.
inline Show showWithSongs(std::size_t count) {
    Show show;
    for (std::size_t i = 1; i <= count; ++i) {
        Song song;
        song.title = "Morceau " + std::to_string(i);
        show.songs.push_back(std::move(song));
    }
    return show;
}

}  // namespace tessivo
