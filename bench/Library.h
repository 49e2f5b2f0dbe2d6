#pragma once

#include "model/Show.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tessivo::bench {

/// A full house of shows: plausible names, every optional field present.
inline std::vector<Show> makeLibrary(int shows, int songsPerShow, int guestsPerSong) {
    std::vector<Show> library;
    for (int i = 0; i < shows; ++i) {
        Show show;
        show.name = "Tournée d'été, soirée " + std::to_string(i + 1);
        for (int j = 0; j < songsPerShow; ++j) {
            Song song;
            song.title = "Chanson à la fenêtre " + std::to_string(j + 1);
            song.ltcTimecode = "01:" + std::to_string(10 + j % 50) + ":00:00";
            song.duration = 180 + j;
            for (int k = 0; k < guestsPerSong; ++k) {
                song.guests.push_back({Uuid::random(), "Invitée " + std::to_string(k + 1),
                                       show.mics[static_cast<std::size_t>(k % 4)], show.iems[0],
                                       "-6 dB"});
            }
            show.songs.push_back(std::move(song));
        }
        library.push_back(std::move(show));
    }
    return library;
}

}  // namespace tessivo::bench
