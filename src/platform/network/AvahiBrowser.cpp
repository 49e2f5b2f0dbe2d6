#include "platform/network/AvahiBrowser.h"

#include "platform/network/LocalNetwork.h"

#include <algorithm>
#include <utility>

namespace tessivo {
namespace {

/// From the end of a connection to the question what there is now, in seconds.
constexpr double askAgainDelay = 1.0;
constexpr double withdrawalSeconds = std::chrono::duration<double>(Withdrawals::duration).count();

}  // namespace

AvahiBrowser::AvahiBrowser(LocalNetwork& network, const std::string& type)
    : network_(network), turns_(network.queue_) {
    auto tell = [this, post = turns_.poster()](ServiceSearch::Report report) {
        post([this, report = std::move(report)] { handleReport(report); });
    };
    search_ = std::make_shared<ServiceSearch>(type, network.withdrawals_, std::move(tell));
    network_.browsers_.push_back(this);
}

AvahiBrowser::~AvahiBrowser() {
    std::erase(network_.browsers_, this);
    network_.avahi_.remove(search_);
}

void AvahiBrowser::start() {
    network_.avahi_.add(search_);
}

std::vector<ServiceSighting> AvahiBrowser::sightings(const ServiceEndpoint& endpoint) const {
    const auto found = std::ranges::find(services_, endpoint, &ServiceSearch::Service::endpoint);
    return found != services_.end() ? found->sightings : std::vector<ServiceSighting>();
}

void AvahiBrowser::connectionEnded(const ServiceEndpoint& endpoint) {
    std::erase(ended_, endpoint);
    ended_.push_back(endpoint);
    if (!std::exchange(isAskingAgain_, true)) {
        turns_.postAfter(askAgainDelay, [this] {
            isAskingAgain_ = false;
            network_.avahi_.restart(search_);
        });
    }
}

void AvahiBrowser::handleReport(ServiceSearch::Report report) {
    services_ = std::move(report.services);
    std::erase_if(ended_, [this](const auto& endpoint) { return sightings(endpoint).empty(); });
    if (report.isIncomplete) {
        turns_.postAfter(withdrawalSeconds,
                         [this] { network_.avahi_.run([search = search_] { search->report(); }); });
    }
    auto found = endpoints();
    if (report.isAnswer || found != reported_) {
        reported_ = found;
        // A copy: the handler may destroy the browser that owns it.
        if (const auto handler = onResultsChanged) {
            handler(found);
        }
    }
}

/// Those to which no connection has ended come first, then the one that ended longest ago. A
/// computer that went without a word stays listed for up to 75 minutes (RFC 6762, 10): whoever
/// takes the first one must not come back to it for ever while another is there.
std::vector<ServiceEndpoint> AvahiBrowser::endpoints() const {
    std::vector<ServiceEndpoint> result;
    for (const auto& service : services_) {
        result.push_back(service.endpoint);
    }
    std::ranges::stable_sort(result, {}, [this](const ServiceEndpoint& endpoint) {
        const auto place = std::ranges::find(ended_, endpoint);
        return place == ended_.end() ? -1 : place - ended_.begin();
    });
    return result;
}

}  // namespace tessivo
