#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/Turns.h"
#include "platform/network/ServiceSearch.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

class LocalNetwork;

/// The services that Avahi sees.
class AvahiBrowser final : public ServiceBrowser {
public:
    AvahiBrowser(LocalNetwork& network, const std::string& type);
    ~AvahiBrowser() override;
    AvahiBrowser(const AvahiBrowser&) = delete;
    AvahiBrowser& operator=(const AvahiBrowser&) = delete;

    void start() override;

    /// Where a service was seen; nowhere when it isn't there.
    std::vector<ServiceSighting> sightings(const ServiceEndpoint& endpoint) const;
    /// A connection to a service has ended.
    void connectionEnded(const ServiceEndpoint& endpoint);

private:
    void handleReport(ServiceSearch::Report report);
    std::vector<ServiceEndpoint> endpoints() const;

    LocalNetwork& network_;
    Turns turns_;
    std::shared_ptr<ServiceSearch> search_;
    bool isAskingAgain_ = false;
    std::vector<ServiceSearch::Service> services_;
    std::vector<ServiceEndpoint> ended_;  // services there are to which a connection has ended
    std::optional<std::vector<ServiceEndpoint>> reported_;
};

}  // namespace tessivo
