#include "display/StageContent.h"

#include "kit/ShownText.h"
#include "live/Countdown.h"
#include "live/Setlist.h"

#include <utility>

namespace tessivo {
namespace {

StageContent::Panel toPanel(StagePanel panel) {
    switch (panel) {
        case StagePanel::waitingForShow:
            return StageContent::WaitingForShow;
        case StagePanel::emptySetlist:
            return StageContent::EmptySetlist;
        case StagePanel::notStarted:
            return StageContent::NotStarted;
        case StagePanel::finished:
            return StageContent::Finished;
        case StagePanel::songs:
            return StageContent::Songs;
    }
    Q_UNREACHABLE();
}

}  // namespace

StageContent::StageContent(QObject* parent) : QObject(parent) {}

void StageContent::presentShow(const Show* show, std::int64_t songIndex) {
    // The songs change before the panel does, so that a panel never shows a stale song.
    const Song* song = songAt(show, songIndex);
    if (song) {
        past_.present(*show, pastSongs(*show, songIndex));
        next_.present(*show, nextSongs(*show, songIndex, nextSongsOnStage));
        SongInfo current(*song, static_cast<int>(songIndex) + 1);
        SongInfo following = next_.rows().empty() ? SongInfo() : next_.rows().front();
        if (current != current_ || following != following_) {
            current_ = std::move(current);
            following_ = std::move(following);
            Q_EMIT currentChanged();
        }
    }
    const Panel panel = toPanel(stagePanel(show, songIndex));
    const QString showName = show ? toShownText(show->name) : QString();
    if (panel != panel_ || showName != showName_) {
        panel_ = panel;
        showName_ = showName;
        Q_EMIT contentChanged();
    }
}

void StageContent::presentRemaining(std::optional<std::int64_t> seconds) {
    const QString countdown = toQString(countdownText(seconds));
    if (countdown != countdown_) {
        countdown_ = countdown;
        Q_EMIT countdownChanged();
    }
    if (isUrgent(seconds) != urgent_) {
        urgent_ = !urgent_;
        Q_EMIT urgentChanged();
    }
}

}  // namespace tessivo
