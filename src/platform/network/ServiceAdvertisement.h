#pragma once

#include "platform/network/AvahiThread.h"
#include "platform/network/Withdrawals.h"

#include <avahi-client/publish.h>

#include <cstdint>
#include <memory>
#include <string>

namespace tessivo {

/// Has the responder advertise a TCP port of this computer under the computer's name, or under one
/// like it when that is taken.
class ServiceAdvertisement final : public AvahiTask {
public:
    ServiceAdvertisement(std::string type, std::uint16_t port,
                         std::shared_ptr<Withdrawals> withdrawals)
        : type_(std::move(type)), port_(port), withdrawals_(std::move(withdrawals)) {}

    void begin(AvahiClient& client) override;
    void end() override;

private:
    static void called(AvahiEntryGroup* group, AvahiEntryGroupState state, void* self);

    void handleState(AvahiEntryGroupState state);
    void publish();

    std::string type_;
    std::uint16_t port_;
    std::shared_ptr<Withdrawals> withdrawals_;
    std::string name_;
    AvahiEntryGroup* group_ = nullptr;
};

}  // namespace tessivo
