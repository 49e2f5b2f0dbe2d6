#include "platform/network/ServiceAdvertisement.h"

#include <avahi-common/alternative.h>
#include <avahi-common/error.h>
#include <avahi-common/malloc.h>

namespace tessivo {
namespace {

std::string alternative(const std::string& name) {
    char* other = avahi_alternative_service_name(name.c_str());
    std::string result = other;
    avahi_free(other);
    return result;
}

}  // namespace

void ServiceAdvertisement::begin(AvahiClient& client) {
    const char* hostName = avahi_client_get_host_name(&client);
    group_ = hostName != nullptr ? avahi_entry_group_new(&client, &called, this) : nullptr;
    if (group_ != nullptr) {
        name_ = hostName;
        publish();
    }
}

void ServiceAdvertisement::end() {
    if (group_ != nullptr) {
        avahi_entry_group_free(group_);
        group_ = nullptr;
        withdrawals_->add(name_, type_);
    }
}

void ServiceAdvertisement::called(AvahiEntryGroup* group, AvahiEntryGroupState state, void* self) {
    auto& advertisement = *static_cast<ServiceAdvertisement*>(self);
    // First called before the group's constructor has returned.
    if (advertisement.group_ == group) {
        advertisement.handleState(state);
    }
}

void ServiceAdvertisement::handleState(AvahiEntryGroupState state) {
    if (state == AVAHI_ENTRY_GROUP_ESTABLISHED) {
        withdrawals_->remove(name_, type_);
    } else if (state == AVAHI_ENTRY_GROUP_COLLISION) {
        // Another computer has the name: the responder has taken the service back.
        avahi_entry_group_reset(group_);
        name_ = alternative(name_);
        publish();
    }
}

void ServiceAdvertisement::publish() {
    const auto add = [this] {
        return avahi_entry_group_add_service(group_, AVAHI_IF_UNSPEC, AVAHI_PROTO_UNSPEC,
                                             AvahiPublishFlags{}, name_.c_str(), type_.c_str(),
                                             nullptr, nullptr, port_, nullptr);
    };
    int error = add();
    while (error == AVAHI_ERR_COLLISION) {  // with another program on this computer
        name_ = alternative(name_);
        error = add();
    }
    if (error == AVAHI_OK) {
        avahi_entry_group_commit(group_);
    }
}

}  // namespace tessivo
