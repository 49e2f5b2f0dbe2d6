#pragma once

#include "platform/Turns.h"
#include "platform/network/ServiceResolution.h"
#include "platform/network/SocketEvents.h"

#include <deque>
#include <memory>
#include <vector>

namespace tessivo {

/// Opens a socket to a service: resolves it and tries its addresses, a new one whenever the last
/// has failed or hasn't answered for a while, until one opens. Main thread only.
class ServiceDialer {
public:
    using Done = std::function<void(FileDescriptor)>;

    ServiceDialer(AvahiThread& avahi, SocketEvents& events, MainQueue& queue,
                  ServiceEndpoint service, std::vector<ServiceSighting> sightings);
    /// Gives up without a word.
    ~ServiceDialer();
    ServiceDialer(const ServiceDialer&) = delete;
    ServiceDialer& operator=(const ServiceDialer&) = delete;

    /// Calls `done` once, in a turn of its own, with an open socket that doesn't block, or with
    /// none. It may destroy the dialer. To be called once.
    void start(Done done);

private:
    class Attempt;

    void add(const SocketAddress& address);
    void tryNext();
    void settle(Attempt& attempt);
    void failIfNothingIsLeft();
    void finish(FileDescriptor socket);

    AvahiThread& avahi_;
    SocketEvents& events_;
    MainQueue& queue_;
    Turns turns_;
    std::shared_ptr<ServiceResolution> resolution_;
    Done done_;
    bool isResolved_ = false;              // no more addresses come
    std::deque<SocketAddress> addresses_;  // not tried yet
    std::vector<std::unique_ptr<Attempt>> attempts_;
};

}  // namespace tessivo
