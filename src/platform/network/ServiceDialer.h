#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/Turns.h"
#include "platform/network/Responder.h"
#include "platform/network/ServiceInquiry.h"
#include "platform/network/ServiceSighting.h"
#include "platform/network/SocketEvents.h"

#include <sys/socket.h>

#include <deque>
#include <memory>
#include <vector>

namespace tessivo {

/// A call of that method of the responder, which asks where a service is.
QDBusMessage resolution(const char* method, const ServiceEndpoint& service,
                        const ServiceSighting& sighting);

/// Opens a socket to a service: resolves it, once for each of its sightings because a computer has
/// other addresses on each of its networks, and tries the addresses, a new one whenever the last
/// has failed or hasn't answered for a while, until one opens. Main thread only.
class ServiceDialer {
public:
    using Done = std::function<void(FileDescriptor)>;

    /// How long all of it may take, in seconds, while nobody else waits for a turn. The system
    /// alone would wait for minutes.
    static constexpr double timeLimit = 7.0;

    /// `limit` is how long it may take as things stand when it is asked, which it is all the time.
    ServiceDialer(Responder& responder, SocketEvents& events, MainQueue& queue,
                  ServiceEndpoint service, std::vector<ServiceSighting> sightings,
                  std::function<double()> limit);
    /// Gives up without a word.
    ~ServiceDialer();
    ServiceDialer(const ServiceDialer&) = delete;
    ServiceDialer& operator=(const ServiceDialer&) = delete;

    /// Calls `done` once, in a turn of its own, with an open socket that doesn't block, or with
    /// none. It may destroy the dialer. To be called once.
    void start(Done done);
    /// Whether the responder has said of each sighting where the service is, so that nothing that
    /// it was asked goes on.
    bool isPlaced() const { return resolutionCount_ == 0 && !hasUnplaced_; }
    /// What is asked of a computer that refused, if one did.
    std::unique_ptr<ServiceInquiry> takeInquiry() { return std::move(inquiry_); }

private:
    class Attempt;

    void watchTime(double passed);
    void handleResolution(const QDBusMessage& answer);
    void handleError(int error, const sockaddr_storage& address);
    void add(const sockaddr_storage& address);
    void tryNext();
    void settle(Attempt& attempt);
    void failIfNothingIsLeft();
    void finish(FileDescriptor socket);

    Responder& responder_;
    SocketEvents& events_;
    MainQueue& queue_;
    Turns turns_;
    ServiceEndpoint service_;
    std::vector<ServiceSighting> sightings_;
    const std::function<double()> limit_;
    Done done_;
    std::unique_ptr<ServiceInquiry> inquiry_;
    std::size_t resolutionCount_ = 0;  // those without an answer yet
    bool hasUnplaced_ = false;
    Lifetime resolutions_;
    std::deque<sockaddr_storage> addresses_;  // not tried yet
    std::vector<std::unique_ptr<Attempt>> attempts_;
};

}  // namespace tessivo
