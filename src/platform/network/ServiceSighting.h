#pragma once

namespace tessivo {

/// Where a service was seen, in Avahi's numbers; by default anywhere.
struct ServiceSighting {
    static constexpr int ipv4 = 0;
    static constexpr int ipv6 = 1;

    int interface = -1;  ///< as the system counts them
    int protocol = -1;

    friend bool operator==(const ServiceSighting&, const ServiceSighting&) = default;
};

}  // namespace tessivo
