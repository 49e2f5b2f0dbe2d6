#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/network/SocketEvents.h"

#include <sys/socket.h>

namespace tessivo {

/// Asks one computer whether it advertises a service, past all caches: by a question to its
/// responder alone (RFC 6762, 5.5 and 6.7). What a computer advertised before its power was cut
/// lives on elsewhere for two minutes, and it may be back by then as something else. Main thread
/// only.
class ServiceInquiry final : private SocketEvents::Handler {
public:
    /// `computer` is any of its addresses, with any port.
    ServiceInquiry(SocketEvents& events, const sockaddr_storage& computer,
                   const ServiceEndpoint& service);
    ~ServiceInquiry();
    ServiceInquiry(const ServiceInquiry&) = delete;
    ServiceInquiry& operator=(const ServiceInquiry&) = delete;

    /// Whether it has said that it does.
    bool wasConfirmed() const { return wasConfirmed_; }

private:
    void handleSocket(std::uint32_t events) override;

    SocketEvents& events_;
    FileDescriptor socket_;
    bool isWatched_ = false;
    bool wasConfirmed_ = false;
};

}  // namespace tessivo
