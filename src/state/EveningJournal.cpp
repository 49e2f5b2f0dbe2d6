#include "state/EveningJournal.h"

#include "platform/Clock.h"
#include "platform/Journal.h"

#include <string>
#include <utility>

namespace tessivo {

EveningJournal::EveningJournal(AppState& state, const Clock& clock, Journal& journal)
    : state_(state),
      clock_(clock),
      journal_(journal),
      stateChanges_(state.didChange.subscribe([this](AppState::Field field) { follow(field); })),
      timecodeChanges_(state.ltcManager().didChange.subscribe(
          [this](LtcManager::Field field) { follow(field); })) {
    tell(journal::ProgramBegins());
    if (state.isLocked()) {
        tell(journal::Lock{true});
    }
    if (!state.keepsShows()) {
        tell(journal::Keeping{false});
    }
}

EveningJournal::~EveningJournal() {
    tell(journal::ProgramEnds());
}

void EveningJournal::tell(const journal::Event& event) {
    journal_.write(clock_.now(), journal::lineFor(event));
}

void EveningJournal::follow(AppState::Field field) {
    using Field = AppState::Field;
    const Show* show = state_.activeShow();
    switch (field) {
        case Field::activeShowId:
            if (show) {
                tell(journal::ShowOpened{show->name});
            }
            break;
        case Field::currentSongStartedAt: {  // changed by moves, and by nothing else
            const Song* song = songAt(show, state_.activeSongIndex());
            tell(journal::CursorMoved{state_.activeSongIndex(), show ? show->songs.size() : 0,
                                      song ? song->title : std::string(), state_.movedBy()});
            break;
        }
        case Field::isLocked:
            tell(journal::Lock{state_.isLocked()});
            break;
        case Field::keepsShows:
            tell(journal::Keeping{state_.keepsShows()});
            break;
        case Field::lastFileError:
            tell(journal::FileRefused{state_.lastFileError().value_or(std::string())});
            break;
        default:
            break;
    }
}

void EveningJournal::follow(LtcManager::Field field) {
    using Field = LtcManager::Field;
    const LtcManager& manager = state_.ltcManager();
    if (field == Field::isCapturing &&
        std::exchange(isCapturing_, manager.isCapturing()) != manager.isCapturing()) {
        tell(journal::Capture{isCapturing_});
    } else if (field == Field::signalDetected &&
               std::exchange(hasSignal_, manager.signalDetected()) != manager.signalDetected()) {
        tell(journal::Signal{hasSignal_, manager.currentTimecodeDisplay()});
    } else if (field == Field::lastError && manager.lastError()) {
        tell(journal::InputFailed{*manager.lastError()});
    }
}

}  // namespace tessivo
