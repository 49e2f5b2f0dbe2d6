#pragma once

#include "platform/network/ResponderObject.h"
#include "platform/network/Withdrawals.h"

#include <cstdint>
#include <string>

namespace tessivo {

/// Has the responder advertise a TCP port of this computer under the computer's name, or under one
/// like it when that is taken, from `begin` on. Destroying it withdraws the service, without
/// waiting.
class ServiceAdvertisement {
public:
    ServiceAdvertisement(Responder& responder, MainQueue& queue, Withdrawals& withdrawals,
                         std::string type, std::uint16_t port);
    ~ServiceAdvertisement();
    ServiceAdvertisement(const ServiceAdvertisement&) = delete;
    ServiceAdvertisement& operator=(const ServiceAdvertisement&) = delete;

    void begin();

    /// That it has, or is about to have; empty before it has begun and the responder was there.
    std::string name() const { return name_.toStdString(); }

private:
    void advertise();
    void addService();
    void rename();
    void handleState(int state);

    Responder& responder_;
    Withdrawals& withdrawals_;
    const std::string type_;
    const std::uint16_t port_;
    bool hasBegun_ = false;
    QString name_;
    ResponderObject group_;
};

}  // namespace tessivo
