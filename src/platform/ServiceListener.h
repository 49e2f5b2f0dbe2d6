#pragma once

#include "platform/StreamConnection.h"

#include <functional>
#include <memory>
#include <string>

namespace tessivo {

/// Listens on a free TCP port, on IPv4 and IPv6, and advertises it by DNS-SD under the computer's
/// name (or what the responder makes of it when the name is taken), also after a restart of the
/// responder. Destroying it withdraws the service and closes the port; the connections that it gave
/// away stay. Main thread only.
class ServiceListener {
public:
    virtual ~ServiceListener() = default;

    /// Called with each connection that came in, not started yet; dropping it refuses the peer.
    /// Runs in main-thread turns of its own, and may destroy the listener, after which it doesn't
    /// run any more.
    std::function<void(std::unique_ptr<StreamConnection>)> onNewConnection;

    /// Called once, when `onNewConnection` is in place: nobody is told of the service before. What
    /// can be prepared for it is by then, so that the news goes out however busy the main thread is
    /// afterwards.
    virtual void start() = 0;

    /// The name under which it is advertised; empty until there is one.
    virtual std::string name() const = 0;
};

}  // namespace tessivo
