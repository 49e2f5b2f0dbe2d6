#include "platform/network/LocalNetwork.h"

#include "platform/network/AvahiBrowser.h"
#include "platform/network/ServiceDialer.h"
#include "platform/network/TcpConnection.h"
#include "platform/network/TcpListener.h"

#include <algorithm>
#include <utility>

namespace tessivo {

std::unique_ptr<ServiceBrowser> LocalNetwork::makeBrowser(const std::string& type) {
    return std::make_unique<AvahiBrowser>(*this, type);
}

std::unique_ptr<ServiceListener> LocalNetwork::makeListener(const std::string& type) {
    FileDescriptor socket = TcpListener::openPort();
    if (!socket.isOpen()) {
        return nullptr;
    }
    return std::make_unique<TcpListener>(responder_, events_, queue_, withdrawals_,
                                         std::move(socket), type);
}

std::unique_ptr<StreamConnection> LocalNetwork::connect(const ServiceEndpoint& endpoint) {
    called_.push_back(endpoint);
    auto dialer =
        std::make_unique<ServiceDialer>(responder_, events_, queue_, endpoint, sightings(endpoint),
                                        [this, endpoint] { return patience(endpoint); });
    return std::make_unique<TcpConnection>(
        events_, queue_, std::move(dialer),
        [this, endpoint](CallEnd how) { connectionEnded(endpoint, how); });
}

/// Where a service was seen by the browsers; anywhere when they don't know it.
std::vector<ServiceSighting> LocalNetwork::sightings(const ServiceEndpoint& endpoint) const {
    for (const AvahiBrowser* browser : browsers_) {
        auto known = browser->sightings(endpoint);
        if (!known.empty()) {
            return known;
        }
    }
    return {ServiceSighting{}};
}

/// How long a connection may take to open as things stand now, in seconds.
double LocalNetwork::patience(const ServiceEndpoint& endpoint) const {
    double least = ServiceDialer::timeLimit;
    for (const AvahiBrowser* browser : browsers_) {
        least = std::min(least, browser->patience(endpoint));
    }
    return least;
}

bool LocalNetwork::isCalled(const ServiceEndpoint& endpoint) const {
    return std::ranges::find(called_, endpoint) != called_.end();
}

void LocalNetwork::connectionEnded(const ServiceEndpoint& endpoint, CallEnd how) {
    called_.erase(std::ranges::find(called_, endpoint));
    for (AvahiBrowser* browser : browsers_) {
        browser->connectionEnded(endpoint, how);
    }
}

}  // namespace tessivo
