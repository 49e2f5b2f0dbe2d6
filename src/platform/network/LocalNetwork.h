#pragma once

#include "platform/Network.h"
#include "platform/network/CallEnd.h"
#include "platform/network/NetworkWatch.h"
#include "platform/network/QuestionRhythm.h"
#include "platform/network/Responder.h"
#include "platform/network/ServiceSighting.h"
#include "platform/network/SocketEvents.h"
#include "platform/network/Withdrawals.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessivo {

class AvahiBrowser;
class MainQueue;

/// The network that this computer is on: the system's TCP, and its DNS-SD responder Avahi. Without
/// the responder nothing is found until it comes; the rest works. Made and destroyed on the main
/// thread, while the application object lives. Making it waits for the message bus; nothing waits
/// for the responder.
class LocalNetwork final : public Network {
public:
    /// Throws std::system_error when the system lets no sockets be watched.
    explicit LocalNetwork(MainQueue& queue)
        : queue_(queue),
          responder_(queue),
          watch_(responder_, queue, [this] { troubleDidChange.emit(); }) {}

    Trouble trouble() const override { return watch_.trouble(); }
    std::unique_ptr<ServiceBrowser> makeBrowser(const std::string& type) override;
    std::unique_ptr<ServiceListener> makeListener(const std::string& type) override;
    std::unique_ptr<StreamConnection> connect(const ServiceEndpoint& endpoint) override;

private:
    friend class AvahiBrowser;

    std::vector<ServiceSighting> sightings(const ServiceEndpoint& endpoint) const;
    double patience(const ServiceEndpoint& endpoint) const;
    bool isCalled(const ServiceEndpoint& endpoint) const;
    void connectionEnded(const ServiceEndpoint& endpoint, CallEnd how);

    MainQueue& queue_;
    SocketEvents events_;
    std::vector<AvahiBrowser*> browsers_;            // those there are
    std::vector<ServiceEndpoint> called_;            // by connections that have not ended
    std::map<std::string, QuestionRhythm> rhythms_;  // by type
    Withdrawals withdrawals_;
    Responder responder_;
    NetworkWatch watch_;
};

}  // namespace tessivo
