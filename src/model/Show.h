#pragma once

#include "base/Uuid.h"
#include "model/Song.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
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

/// The song under the cursor, or null when `songIndex` isn't a position of the show's setlist.
inline const Song* songAt(const Show* show, std::int64_t songIndex) {
    const bool isPosition = show && songIndex >= 0 && songIndex < std::ssize(show->songs);
    return isPosition ? &show->songs[static_cast<std::size_t>(songIndex)] : nullptr;
}

/// The first of the shows, songs or guests with this id, or null; good until some come or go.
template <typename Records>
auto firstWithId(Records& records, const Uuid& id) {
    const auto found =
        std::ranges::find_if(records, [&](const auto& record) { return record.id == id; });
    return found == records.end() ? nullptr : &*found;
}

}  // namespace tessivo
