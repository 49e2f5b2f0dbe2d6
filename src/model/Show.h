#pragma once

#include "base/Uuid.h"
#include "model/Song.h"

#include <string>
#include <vector>

namespace tessivo {

/// One show: its equipment labels and its setlist. A plain value; a new one has a random identity,
/// the usual labels and no songs.
struct Show {
    Uuid id = Uuid::random();
    std::string name = "Nouveau show";
    std::vector<std::string> mics = {"Guest 1", "Guest 2", "Guest 3", "Guest 4"};
    std::vector<std::string> iems = {"Générique", "Perso"};
    std::vector<Song> songs;  ///< in performance order; a position here is the live cursor's value

    friend bool operator==(const Show&, const Show&) = default;
};

}  // namespace tessivo
