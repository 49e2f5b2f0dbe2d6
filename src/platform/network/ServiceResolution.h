#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/network/AvahiThread.h"

#include <avahi-client/lookup.h>
#include <sys/socket.h>

#include <optional>

namespace tessivo {

/// Where a service was seen; by default anywhere.
struct ServiceSighting {
    AvahiIfIndex interface = AVAHI_IF_UNSPEC;
    AvahiProtocol protocol = AVAHI_PROTO_UNSPEC;

    friend auto operator<=>(const ServiceSighting&, const ServiceSighting&) = default;
};

struct SocketAddress {
    sockaddr_storage storage{};
    socklen_t size = 0;
};

/// Finds the addresses and the port of a service: one address for each sighting, because a computer
/// has other addresses on each of its networks.
class ServiceResolution final : public AvahiTask {
public:
    /// `tell` is called in Avahi's thread with each address, and with nothing when no more come.
    using Tell = std::function<void(std::optional<SocketAddress>)>;

    ServiceResolution(ServiceEndpoint service, std::vector<ServiceSighting> sightings, Tell tell)
        : service_(std::move(service)), sightings_(std::move(sightings)), tell_(std::move(tell)) {}

    void begin(AvahiClient& client) override;
    void end() override;

private:
    static void called(AvahiServiceResolver* resolver, AvahiIfIndex interface, AvahiProtocol,
                       AvahiResolverEvent event, const char*, const char*, const char*, const char*,
                       const AvahiAddress* address, std::uint16_t port, AvahiStringList*,
                       AvahiLookupResultFlags, void* self);

    ServiceEndpoint service_;
    std::vector<ServiceSighting> sightings_;
    Tell tell_;
    std::vector<AvahiServiceResolver*> resolvers_;  // those without an answer yet
};

}  // namespace tessivo
