#include "model/ShowEditing.h"
#include "platform/Clock.h"
#include "state/AppState.h"

#include <utility>

namespace tessivo {

Edit AppState::named(std::string name) const {
    return {std::move(name), platform_.clock.now()};
}

Edit AppState::oneOfMany(std::string name, std::string field) const {
    return {std::move(name), platform_.clock.now(), std::move(field)};
}

Edit AppState::removal(std::string name, std::string whatHappened) const {
    return {std::move(name), platform_.clock.now(), {}, std::move(whatHappened)};
}

const Edit* AppState::offeredUndo() const {
    const Edit* edit = undoableEdit();
    if (!edit || edit->removal.empty()) {
        return nullptr;
    }
    // The clock of the screens lags by up to a second; one that was set back ends the offer.
    const double age = nowTick_ - edit->at;
    return age >= -1.0 && age < undoOffer ? edit : nullptr;
}

void AppState::undo() {
    if (undoableEdit() && !isLocked_) {
        step([&] { library_.undo(); });
    }
}

void AppState::redo() {
    if (redoableEdit() && !isLocked_) {
        step([&] { library_.redo(); });
    }
}

void AppState::step(const std::function<void()>& apply) {
    const Song* const current = songAt(activeShow(), activeSongIndex_);
    const std::optional<Uuid> currentId = current ? std::optional(current->id) : std::nullopt;
    change(Field::shows, [&] {
        change(Field::activeSongIndex, [&] {
            apply();
            if (const Show* show = activeShow()) {
                activeSongIndex_ = editing::cursorOn(*show, currentId, activeSongIndex_);
            }
        });
    });
    if (activeShowId_ && !activeShow()) {
        assign(Field::activeShowId, activeShowId_, std::nullopt);
    }
    save();
}

}  // namespace tessivo
