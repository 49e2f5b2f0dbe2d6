#include "ui/live/NextHandOversViewModel.h"

#include "kit/ShownText.h"

#include <utility>

namespace tessivo {

void NextHandOversViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows || field == AppState::Field::activeSongIndex) {
        present();
    }
}

void NextHandOversViewModel::present() {
    const HandOvers& all = handOvers();
    const std::int64_t index = state().activeSongIndex();
    // The cursor may stand anywhere, and past the last song nothing is next.
    const bool isInSetlist = index >= -1 && index < std::ssize(all.songs);
    QString line = isInSetlist ? toShownText(handOversText(all, index + 1)) : QString();
    if (line != line_) {
        line_ = std::move(line);
        Q_EMIT lineChanged();
    }
}

}  // namespace tessivo
