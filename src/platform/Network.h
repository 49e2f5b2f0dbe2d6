#pragma once

#include "base/Signal.h"
#include "platform/ServiceBrowser.h"
#include "platform/ServiceListener.h"
#include "platform/StreamConnection.h"

#include <memory>
#include <string>

namespace tessivo {

/// The local network as one computer sees it. It outlives what it makes. Main thread only.
class Network {
public:
    /// What keeps this computer from finding others and being found.
    enum class Trouble {
        none,
        offline,          ///< it was on a network, and no longer is
        responderSilent,  ///< the system's responder doesn't answer, or isn't there
    };

    virtual ~Network() = default;

    /// Told within a few seconds. What was made here goes on by itself once the trouble is over.
    virtual Trouble trouble() const = 0;
    /// Emitted after each change of the trouble.
    Signal<> troubleDidChange;

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
