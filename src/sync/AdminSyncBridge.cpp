#include "sync/AdminSyncBridge.h"

#include "platform/MainQueue.h"
#include "state/AppState.h"
#include "sync/AdminBroadcaster.h"

namespace tessivo {

struct AdminSyncBridge::Attached {
    AppState& state;
    AdminBroadcaster& broadcaster;
    Subscription changes{};

    void send() const {
        if (const Show* show = state.activeShow()) {
            broadcaster.update({*show, state.activeSongIndex(), state.currentSongStartedAt()});
        }
    }
};

AdminSyncBridge::AdminSyncBridge(MainQueue& mainQueue) : mainQueue_(mainQueue) {}

void AdminSyncBridge::attach(AppState& state, AdminBroadcaster& broadcaster) {
    if (attached_) {
        return;
    }
    attached_ = std::make_shared<Attached>(Attached{state, broadcaster});
    attached_->changes = state.willChange.subscribe(
        [&queue = mainQueue_, weak = std::weak_ptr<Attached>(attached_)](AppState::Field) {
            // The new value is in place when this runs.
            queue.post([weak] {
                if (const auto attached = weak.lock()) {
                    attached->send();
                }
            });
        });
}

}  // namespace tessivo
