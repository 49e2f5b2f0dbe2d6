#include "platform/network/ServiceSearch.h"

#include <utility>

namespace tessivo {

void ServiceSearch::begin(AvahiClient& client) {
    hasSeenCache_ = false;
    hasAnswered_ = false;
    browser_ = avahi_service_browser_new(&client, AVAHI_IF_UNSPEC, AVAHI_PROTO_UNSPEC,
                                         type_.c_str(), nullptr, AvahiLookupFlags{}, &called, this);
}

void ServiceSearch::end() {
    if (browser_ != nullptr) {
        avahi_service_browser_free(browser_);
        browser_ = nullptr;
    }
    services_.clear();
}

void ServiceSearch::called(AvahiServiceBrowser*, AvahiIfIndex interface, AvahiProtocol protocol,
                           AvahiBrowserEvent event, const char* name, const char*,
                           const char* domain, AvahiLookupResultFlags, void* self) {
    auto& search = *static_cast<ServiceSearch*>(self);
    const ServiceSighting sighting{interface, protocol};
    if (event == AVAHI_BROWSER_NEW) {
        search.services_[{name, domain}].push_back(sighting);
    } else if (event == AVAHI_BROWSER_REMOVE) {
        search.remove(name, domain, sighting);
    }
    search.handleEvent(event);
}

void ServiceSearch::remove(const std::string& name, const std::string& domain,
                           ServiceSighting sighting) {
    const auto found = services_.find({name, domain});
    if (found != services_.end()) {
        std::erase(found->second, sighting);
        if (found->second.empty()) {
            services_.erase(found);
            withdrawals_->remove(name, type_);
        }
    }
}

/// What the responder knows already comes first, then comes what the network answers in a second.
void ServiceSearch::handleEvent(AvahiBrowserEvent event) {
    hasSeenCache_ = hasSeenCache_ || event == AVAHI_BROWSER_CACHE_EXHAUSTED;
    const bool isChange = event == AVAHI_BROWSER_NEW || event == AVAHI_BROWSER_REMOVE;
    const bool isAnswer = event == AVAHI_BROWSER_ALL_FOR_NOW ||
                          (event == AVAHI_BROWSER_CACHE_EXHAUSTED && !services_.empty());
    if ((isChange && hasSeenCache_) || (isAnswer && !hasAnswered_)) {
        report();
    }
}

void ServiceSearch::report() {
    Report report;
    for (const auto& [key, sightings] : services_) {
        if (withdrawals_->contain(key.first, type_)) {
            report.isIncomplete = true;
        } else {
            report.services.push_back({{key.first, type_, key.second}, sightings});
        }
    }
    report.isAnswer = !std::exchange(hasAnswered_, true);
    tell_(std::move(report));
}

}  // namespace tessivo
