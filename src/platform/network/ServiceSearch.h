#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/network/ServiceResolution.h"
#include "platform/network/Withdrawals.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tessivo {

/// Asks the responder for the services of one type and keeps what it says.
class ServiceSearch final : public AvahiTask {
public:
    struct Service {
        ServiceEndpoint endpoint;
        std::vector<ServiceSighting> sightings;  ///< one or more
    };
    struct Report {
        std::vector<Service> services;  ///< one entry for each
        bool isAnswer = false;          ///< the network was asked since the last answer
        bool isIncomplete = false;      ///< something may be hidden because it was just withdrawn
    };
    /// Called in Avahi's thread with all that there is.
    using Tell = std::function<void(Report)>;

    ServiceSearch(std::string type, std::shared_ptr<Withdrawals> withdrawals, Tell tell)
        : type_(std::move(type)), withdrawals_(std::move(withdrawals)), tell_(std::move(tell)) {}

    void begin(AvahiClient& client) override;
    void end() override;
    void report();

private:
    static void called(AvahiServiceBrowser*, AvahiIfIndex interface, AvahiProtocol protocol,
                       AvahiBrowserEvent event, const char* name, const char* type,
                       const char* domain, AvahiLookupResultFlags, void* self);

    void handleEvent(AvahiBrowserEvent event);
    void remove(const std::string& name, const std::string& domain, ServiceSighting sighting);

    /// The name and the domain.
    using Key = std::pair<std::string, std::string>;

    std::string type_;
    std::shared_ptr<Withdrawals> withdrawals_;
    Tell tell_;
    AvahiServiceBrowser* browser_ = nullptr;
    bool hasSeenCache_ = false;
    bool hasAnswered_ = false;
    std::map<Key, std::vector<ServiceSighting>> services_;
};

}  // namespace tessivo
