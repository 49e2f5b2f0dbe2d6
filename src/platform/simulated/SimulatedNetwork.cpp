#include "platform/simulated/SimulatedNetwork.h"

#include "base/Lifetime.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace tessivo {

using Side = SimulatedLink::Side;

class SimulatedComputer::Browser final : public ServiceBrowser {
public:
    Browser(SimulatedComputer& computer, std::string type)
        : computer_(computer), type_(std::move(type)) {}
    ~Browser() override { std::erase(computer_.browsers_, this); }

    void start() override {
        computer_.browsers_.push_back(this);
        askAfter(computer_.newsDelay());
    }

    void servicesChanged() {
        postAfter(computer_.newsDelay(), [this] { report(false); });
    }

    void askAgain(double delay = SimulatedNetwork::askAgainDelay) {
        if (!isAsking_) {
            askAfter(delay);
        }
    }

private:
    void askAfter(double seconds) {
        isAsking_ = true;
        postAfter(seconds, [this] {
            isAsking_ = false;
            ++computer_.questionCount_;
            report(true);
        });
    }

    void report(bool isAnswer) {
        if (computer_.isDeaf_) {
            return;
        }
        auto services = computer_.network_.servicesOfType(type_);
        if (isAnswer || services != reported_) {
            reported_ = services;
            callHandler(onResultsChanged, services);
        }
    }

    template <typename Task>
    void postAfter(double seconds, Task task) {
        computer_.network_.queue_.postAfter(seconds, life_.guard(std::move(task)));
    }

    SimulatedComputer& computer_;
    std::string type_;
    bool isAsking_ = false;
    std::optional<std::vector<ServiceEndpoint>> reported_;
    Lifetime life_;
};

class SimulatedComputer::Listener final : public ServiceListener {
public:
    Listener(SimulatedComputer& computer, std::string type)
        : computer_(computer), service_{{}, std::move(type), "local"} {}
    ~Listener() override {
        if (computer_.isPowerless_) {
            computer_.network_.records_.push_back(service_);
        }
        std::erase(computer_.network_.listeners_, this);
        computer_.network_.servicesChanged();
    }

    void start() override {
        computer_.isPowerless_ = false;
        std::erase_if(computer_.network_.records_,
                      [&](const auto& record) { return record.name == computer_.name_; });
        service_.name = computer_.network_.freeName(computer_.name_, service_.type);
        computer_.network_.listeners_.push_back(this);
        computer_.network_.servicesChanged();
    }

    std::string name() const override { return service_.name; }

    const ServiceEndpoint& service() const { return service_; }

    void accept(const std::shared_ptr<SimulatedLink>& link) {
        computer_.add(link);
        link->answer(computer_.cable_);
        // Without a listener, the end that is made closes the call by going at once.
        auto take = life_.guard([this](std::unique_ptr<StreamConnection> connection) {
            callHandler(onNewConnection, std::move(connection));
        });
        computer_.network_.queue_.post(
            [link, take]() mutable { take(link->makeEnd(Side::server)); });
    }

private:
    SimulatedComputer& computer_;
    ServiceEndpoint service_;
    Lifetime life_;
};

std::unique_ptr<ServiceBrowser> SimulatedComputer::makeBrowser(const std::string& type) {
    return std::make_unique<Browser>(*this, type);
}

std::unique_ptr<ServiceListener> SimulatedComputer::makeListener(const std::string& type) {
    return isOutOfPorts_ ? nullptr : std::make_unique<Listener>(*this, type);
}

std::unique_ptr<StreamConnection> SimulatedComputer::connect(const ServiceEndpoint& endpoint) {
    const auto link = std::make_shared<SimulatedLink>(network_.queue_, cable_);
    link->onOpening = [this, endpoint](const std::shared_ptr<SimulatedLink>& call) {
        network_.open(endpoint, call);
    };
    link->onClientEnded = [this] {
        for (Browser* browser : browsers_) {
            browser->askAgain();
        }
    };
    add(link);
    return link->makeEnd(Side::client);
}

void SimulatedComputer::add(const std::shared_ptr<SimulatedLink>& link) {
    std::erase_if(links_, [](const auto& known) { return known.expired(); });
    links_.push_back(link);
}

template <typename Change>
void SimulatedComputer::forEachLink(Change change) {
    for (const auto& known : links_) {
        if (const auto link = known.lock()) {
            change(*link);
        }
    }
}

void SimulatedComputer::setStalled(bool isStalled) {
    cable_.isStalled = isStalled;
    forEachLink([](SimulatedLink& link) { link.pump(); });
}

void SimulatedComputer::setDeaf(bool isDeaf) {
    if (std::exchange(isDeaf_, isDeaf) && !isDeaf) {
        for (Browser* browser : browsers_) {
            browser->askAgain(newsDelay());
        }
    }
    troubleDidChange.emit();
}

double SimulatedComputer::newsDelay() const {
    return SimulatedNetwork::discoveryDelay + cable_.latency;
}

void SimulatedComputer::cutConnections() {
    forEachLink([](SimulatedLink& link) { link.cut(); });
}

void SimulatedComputer::truncateAfter(std::size_t bytes) {
    forEachLink([bytes](SimulatedLink& link) { link.truncateAfter(bytes); });
}

void SimulatedComputer::repairCable() {
    cable_ = {};
    setDeaf(false);
    forEachLink([](SimulatedLink& link) { link.truncateAfter(std::nullopt); });
}

SimulatedComputer& SimulatedNetwork::addComputer(std::string name) {
    computers_.push_back(std::make_unique<SimulatedComputer>(*this, std::move(name)));
    return *computers_.back();
}

std::vector<ServiceEndpoint> SimulatedNetwork::servicesOfType(const std::string& type) const {
    std::vector<ServiceEndpoint> services;
    for (const auto* listener : listeners_) {
        if (listener->service().type == type) {
            services.push_back(listener->service());
        }
    }
    std::ranges::copy_if(records_, std::back_inserter(services),
                         [&](const auto& record) { return record.type == type; });
    return services;
}

/// A name that is taken gets a number, as responders do (RFC 6762, 9).
std::string SimulatedNetwork::freeName(const std::string& wanted, const std::string& type) const {
    const auto services = servicesOfType(type);
    std::string name = wanted;
    for (int number = 2;
         std::ranges::find(services, name, &ServiceEndpoint::name) != services.end(); ++number) {
        name = wanted + " #" + std::to_string(number);
    }
    return name;
}

void SimulatedNetwork::servicesChanged() {
    for (const auto& computer : computers_) {
        for (SimulatedComputer::Browser* browser : computer->browsers_) {
            browser->servicesChanged();
        }
    }
}

void SimulatedNetwork::open(const ServiceEndpoint& endpoint,
                            const std::shared_ptr<SimulatedLink>& link) {
    const auto listener =
        std::ranges::find(listeners_, endpoint, &SimulatedComputer::Listener::service);
    if (listener != listeners_.end()) {
        (*listener)->accept(link);
    } else if (std::ranges::find(records_, endpoint) == records_.end()) {
        link->refuse();
    } else {
        queue_.postAfter(callTimeLimit, [link] { link->cut(); });
    }
}

}  // namespace tessivo
