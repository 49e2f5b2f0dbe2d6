#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/ServiceListener.h"
#include "platform/StreamConnection.h"

#include <memory>
#include <string>

namespace tessivo {

/// The local network as one computer sees it. It outlives what it makes. Main thread only.
class Network {
public:
    virtual ~Network() = default;

    /// A browser for services of `type` in the default domain. One that can't work reports nothing.
    /// Like all that is made here, neither its making nor its end waits for anybody.
    virtual std::unique_ptr<ServiceBrowser> makeBrowser(const std::string& type) = 0;

    /// A listener for a service of `type` in the default domain, without a TXT record; none when no
    /// port could be opened.
    virtual std::unique_ptr<ServiceListener> makeListener(const std::string& type) = 0;

    /// A connection to a service, not started yet.
    virtual std::unique_ptr<StreamConnection> connect(const ServiceEndpoint& endpoint) = 0;
};

}  // namespace tessivo
