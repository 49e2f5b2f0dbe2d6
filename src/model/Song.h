#pragma once

#include "base/Uuid.h"
#include "model/Guest.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// One entry of the setlist.
struct Song {
    Uuid id = Uuid::random();
    std::string title;
    std::vector<Guest> guests;               ///< in display order
    std::optional<std::string> ltcTimecode;  ///< SMPTE start timecode as text, HH:MM:SS:FF
    std::optional<std::int64_t> duration;    ///< length in whole seconds; not validated

    friend bool operator==(const Song&, const Song&) = default;
};

}  // namespace tessivo
