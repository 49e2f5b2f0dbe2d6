#include "sync/AdminSyncBridge.h"

#include "state/AppState.h"
#include "sync/AdminBroadcaster.h"

namespace tessivo {

void AdminSyncBridge::attach(AppState& state, AdminBroadcaster& broadcaster) {
    if (changes_) {
        return;
    }
    changes_ = state.willChange.subscribe([this, &state, &broadcaster](AppState::Field) {
        // The new value is in place when this runs.
        turns_.post([&state, &broadcaster] {
            if (const Show* show = state.activeShow()) {
                broadcaster.update({*show, state.activeSongIndex(), state.currentSongStartedAt()});
            }
        });
    });
}

}  // namespace tessivo
