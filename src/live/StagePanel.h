#pragma once

#include "model/Show.h"

#include <cstdint>

namespace tessivo {

/// What the stage display shows.
enum class StagePanel {
    waitingForShow,  ///< no show to display
    emptySetlist,    ///< a show without songs
    notStarted,      ///< a cursor before the first song, which only a foreign admin can send
    finished,        ///< the cursor is past the last song
    songs,           ///< the current song with its neighbours
};

StagePanel stagePanel(const Show* show, std::int64_t songIndex);

}  // namespace tessivo
