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

/// Ten songs, of which the first lasts 12 seconds and hands its equipment on to the second.
inline Show concert() {
    Show show = showWithSongs(10);
    show.name = "Concert";
    show.songs[0].duration = 12;
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].guests.push_back({Uuid::random(), "Léa", "HF 2", "Mix 3", "-3"});
    show.songs[0].guests.push_back({Uuid::random(), "", "HF 1", "Mix 1", ""});
    show.songs[1].guests.push_back({Uuid::random(), "Chœurs", "HF 2", "Mix 3", "-3"});
    show.songs[2].ltcTimecode = "";
    return show;
}

}  // namespace tessivo
