#include "live/StagePanel.h"

#include "live/Setlist.h"

namespace tessivo {

StagePanel stagePanel(const Show* show, std::int64_t songIndex) {
    if (!show) {
        return StagePanel::waitingForShow;
    }
    if (show->songs.empty()) {
        return StagePanel::emptySetlist;
    }
    if (isFinished(*show, songIndex)) {
        return StagePanel::finished;
    }
    return songIndex < 0 ? StagePanel::notStarted : StagePanel::songs;
}

}  // namespace tessivo
