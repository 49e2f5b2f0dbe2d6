#include "platform/network/ServiceResolution.h"

#include <netinet/in.h>

#include <cstring>

namespace tessivo {
namespace {

template <typename Address>
SocketAddress socketAddress(const Address& address) {
    SocketAddress result;
    static_assert(sizeof(address) <= sizeof(result.storage));
    std::memcpy(&result.storage, &address, sizeof(address));
    result.size = sizeof(address);
    return result;
}

SocketAddress socketAddress(const AvahiAddress& address, AvahiIfIndex interface,
                            std::uint16_t port) {
    if (address.proto == AVAHI_PROTO_INET) {
        sockaddr_in result{};
        result.sin_family = AF_INET;
        result.sin_port = htons(port);
        result.sin_addr.s_addr = address.data.ipv4.address;
        return socketAddress(result);
    }
    sockaddr_in6 result{};
    result.sin6_family = AF_INET6;
    result.sin6_port = htons(port);
    std::memcpy(&result.sin6_addr, address.data.ipv6.address, sizeof(result.sin6_addr));
    if (IN6_IS_ADDR_LINKLOCAL(&result.sin6_addr)) {
        result.sin6_scope_id = static_cast<std::uint32_t>(interface);
    }
    return socketAddress(result);
}

}  // namespace

void ServiceResolution::begin(AvahiClient& client) {
    for (const ServiceSighting& sighting : sightings_) {
        AvahiServiceResolver* resolver = avahi_service_resolver_new(
            &client, sighting.interface, sighting.protocol, service_.name.c_str(),
            service_.type.c_str(), service_.domain.c_str(), sighting.protocol, AVAHI_LOOKUP_NO_TXT,
            &called, this);
        if (resolver != nullptr) {
            resolvers_.push_back(resolver);
        }
    }
    if (resolvers_.empty()) {
        tell_(std::nullopt);
    }
}

void ServiceResolution::end() {
    for (AvahiServiceResolver* resolver : resolvers_) {
        avahi_service_resolver_free(resolver);
    }
    resolvers_.clear();
    tell_(std::nullopt);
}

void ServiceResolution::called(AvahiServiceResolver* resolver, AvahiIfIndex interface,
                               AvahiProtocol, AvahiResolverEvent event, const char*, const char*,
                               const char*, const char*, const AvahiAddress* address,
                               std::uint16_t port, AvahiStringList*, AvahiLookupResultFlags,
                               void* self) {
    auto& resolution = *static_cast<ServiceResolution*>(self);
    if (event == AVAHI_RESOLVER_FOUND) {
        resolution.tell_(socketAddress(*address, interface, port));
    }
    std::erase(resolution.resolvers_, resolver);
    avahi_service_resolver_free(resolver);
    if (resolution.resolvers_.empty()) {
        resolution.tell_(std::nullopt);
    }
}

}  // namespace tessivo
