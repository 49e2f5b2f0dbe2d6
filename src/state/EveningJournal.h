#pragma once

#include "base/Signal.h"
#include "state/JournalLine.h"
#include "timecode/LtcManager.h"

namespace tessivo {

class Clock;
class Journal;

/// Writes what happens to the state and its timecode into the journal, from its creation to its
/// end, which it tells too: a journal without that end is one of a crash. Who comes and goes on the
/// network is told by `StationJournal`.
class EveningJournal {
public:
    /// All outlive this.
    EveningJournal(AppState& state, const Clock& clock, Journal& journal);
    EveningJournal(const EveningJournal&) = delete;
    EveningJournal& operator=(const EveningJournal&) = delete;
    ~EveningJournal();

private:
    void tell(const journal::Event& event);
    void follow(AppState::Field field);
    void follow(LtcManager::Field field);

    AppState& state_;
    const Clock& clock_;
    Journal& journal_;
    bool isCapturing_ = false;
    bool hasSignal_ = false;
    Subscription stateChanges_;
    Subscription timecodeChanges_;
};

}  // namespace tessivo
