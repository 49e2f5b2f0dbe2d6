#pragma once

#include "platform/Network.h"
#include "platform/network/AvahiThread.h"
#include "platform/network/ServiceResolution.h"
#include "platform/network/SocketEvents.h"
#include "platform/network/Withdrawals.h"

#include <memory>
#include <string>
#include <vector>

namespace tessivo {

class AvahiBrowser;
class MainQueue;

/// The network that this computer is on: the system's TCP, and its DNS-SD responder Avahi. Without
/// the responder nothing is found until it comes; the rest works. Made and destroyed on the main
/// thread, while the application object lives.
class LocalNetwork final : public Network {
public:
    explicit LocalNetwork(MainQueue& queue) : queue_(queue) {}

    std::unique_ptr<ServiceBrowser> makeBrowser(const std::string& type) override;
    std::unique_ptr<ServiceListener> makeListener(const std::string& type) override;
    std::unique_ptr<StreamConnection> connect(const ServiceEndpoint& endpoint) override;

private:
    friend class AvahiBrowser;

    std::vector<ServiceSighting> sightings(const ServiceEndpoint& endpoint) const;
    void connectionEnded(const ServiceEndpoint& endpoint);

    MainQueue& queue_;
    SocketEvents events_;
    std::vector<AvahiBrowser*> browsers_;  // those there are
    std::shared_ptr<Withdrawals> withdrawals_ = std::make_shared<Withdrawals>();
    AvahiThread avahi_;
};

}  // namespace tessivo
