#include "ui/live/NextHandOversViewModel.h"

#include "kit/ShownText.h"

#include <utility>

namespace tessivo {

void NextHandOversViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows) {
        present();
    } else if (field == AppState::Field::activeSongIndex) {
        updateLine();
    }
}

void NextHandOversViewModel::present() {
    handOvers_ = handOvers(show());
    updateLine();
}

void NextHandOversViewModel::updateLine() {
    const std::int64_t index = state().activeSongIndex();
    // The cursor may stand anywhere, and past the last song nothing is next.
    const bool isInSetlist = index >= -1 && index < std::ssize(handOvers_.songs);
    QString line = isInSetlist ? toShownText(handOversText(handOvers_, index + 1)) : QString();
    if (line != line_) {
        line_ = std::move(line);
        Q_EMIT lineChanged();
    }
}

}  // namespace tessivo
