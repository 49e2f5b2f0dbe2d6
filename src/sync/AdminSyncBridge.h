#pragma once

#include "base/Signal.h"
#include "platform/Turns.h"

namespace tessivo {

class AdminBroadcaster;
class AppState;

/// Turns each change of the application state into one live state for the broadcaster. Nothing is
/// compared or held back: a station that lost a message has the next one within a second, as the
/// clock of the state ticks. Main thread only.
class AdminSyncBridge {
public:
    /// `mainQueue` outlives the bridge.
    explicit AdminSyncBridge(MainQueue& mainQueue) : turns_(mainQueue) {}
    AdminSyncBridge(const AdminSyncBridge&) = delete;
    AdminSyncBridge& operator=(const AdminSyncBridge&) = delete;

    /// From now on sends the active show, if there is one, after each change. Both outlive the
    /// bridge. A second call does nothing.
    void attach(AppState& state, AdminBroadcaster& broadcaster);

private:
    Turns turns_;
    Subscription changes_;
};

}  // namespace tessivo
