#include "ui/live/LiveShowViewModel.h"

#include "kit/ShownText.h"
#include "live/Countdown.h"
#include "live/Setlist.h"

#include <algorithm>
#include <utility>

namespace tessivo {

void LiveShowViewModel::jumpToNext(int row) {
    const auto& rows = next_.rows();
    if (row < 0 || static_cast<std::size_t>(row) >= rows.size()) {
        return;
    }
    // By identity, as the setlist may have changed since the row was drawn.
    const std::vector<Song>& songs = show().songs;
    const auto found = std::find_if(songs.begin(), songs.end(), [&](const Song& song) {
        return song.id == rows[static_cast<std::size_t>(row)].id;
    });
    state().jumpTo(found == songs.end() ? 0 : found - songs.begin());
}

void LiveShowViewModel::update(AppState::Field field) {
    switch (field) {
        case AppState::Field::shows:
        case AppState::Field::activeShowId:
        case AppState::Field::activeSongIndex:
            present();
            break;
        case AppState::Field::currentSongStartedAt:
        case AppState::Field::nowTick:
            updateCountdown();
            break;
        default:
            break;
    }
}

void LiveShowViewModel::present() {
    updateContent();
    updateCountdown();
}

void LiveShowViewModel::updateContent() {
    const Show& shown = show();
    const std::int64_t index = state().activeSongIndex();
    past_.present(shown, pastSongs(shown, index));
    next_.present(shown, nextSongs(shown, index, nextSongsOnLiveScreen));

    Content content;
    content.finished = isFinished(shown, index);
    content.position = static_cast<int>(shownPosition(shown, index));
    content.songCount = static_cast<int>(shown.songs.size());
    content.songsWithTimecode = static_cast<int>(
        std::count_if(shown.songs.begin(), shown.songs.end(),
                      [](const Song& song) { return song.ltcTimecode.has_value(); }));
    if (const Song* song = songAt(&shown, index)) {
        content.current.emplace(*song, content.position);
    }
    if (content != content_) {
        content_ = std::move(content);
        Q_EMIT contentChanged();
    }
}

void LiveShowViewModel::updateCountdown() {
    const auto seconds = state().currentSongRemainingSeconds();
    const QString countdown = toQString(countdownText(seconds));
    const bool urgent = isUrgent(seconds);
    if (countdown != countdown_ || urgent != urgent_) {
        countdown_ = countdown;
        urgent_ = urgent;
        Q_EMIT countdownChanged();
    }
}

}  // namespace tessivo
