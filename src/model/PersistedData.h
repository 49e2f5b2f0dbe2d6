#pragma once

#include "base/Uuid.h"
#include "model/Show.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tessivo {

/// Everything that is kept between two runs.
struct PersistedData {
    std::vector<Show> shows;  ///< in list order
    std::optional<Uuid> activeShowId;
    std::int64_t activeSongIndex = 0;  ///< the live cursor
};

}  // namespace tessivo
