#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tessivo {

/// A service that was found by DNS-SD (RFC 6763), as something to connect to. Which of its
/// addresses is reachable is found out when connecting.
struct ServiceEndpoint {
    std::string name;  ///< of the instance, UTF-8; empty when it isn't known
    std::string type;  ///< such as "_http._tcp"
    std::string domain;

    friend bool operator==(const ServiceEndpoint&, const ServiceEndpoint&) = default;
};

/// Looks for the services of one type, from `start` until it is destroyed, across restarts of the
/// system's responder. Main thread only.
class ServiceBrowser {
public:
    virtual ~ServiceBrowser() = default;

    /// Called with the whole set of services there are, in no order: first once the network was
    /// asked, then each time the set changes. There is one entry per service, whatever the network
    /// interfaces and protocols it was seen on.
    ///
    /// After a connection made to one of these endpoints has ended, the network is asked again, at
    /// most once a second, and what is there then is reported even if it is the same. So whoever
    /// lost a service that is still advertised hears of it again. One that couldn't be reached is
    /// put behind those that weren't tried yet, and they are reported at once.
    ///
    /// Runs in main-thread turns of its own, and may destroy the browser, after which it doesn't
    /// run any more.
    std::function<void(const std::vector<ServiceEndpoint>&)> onResultsChanged;

    /// Called once, when `onResultsChanged` is in place.
    virtual void start() = 0;
};

}  // namespace tessivo
