#pragma once

#include "base/Lifetime.h"
#include "platform/network/Responder.h"
#include "platform/network/Withdrawals.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tessivo {

/// Has the responder advertise a TCP port of this computer under the computer's name, or under one
/// like it when that is taken. What fails is tried again for as long as it lives.
class ServiceAdvertisement {
public:
    ServiceAdvertisement(Responder& responder, MainQueue& queue, Withdrawals& withdrawals,
                         std::string type, std::uint16_t port);
    /// Withdraws the service, without waiting for that.
    ~ServiceAdvertisement();
    ServiceAdvertisement(const ServiceAdvertisement&) = delete;
    ServiceAdvertisement& operator=(const ServiceAdvertisement&) = delete;

private:
    void begin();
    void end();
    void beginAgainLater();
    void addService();
    void rename();
    void handleState(int state);

    /// Goes on with `next` after a good answer, and begins again after a bad one.
    template <typename Next>
    void call(const QDBusMessage& method, Next next);

    Responder& responder_;
    MainQueue& queue_;
    Withdrawals& withdrawals_;
    std::string type_;
    std::uint16_t port_;
    QString name_;
    std::unique_ptr<ResponderObject> group_;
    Lifetime attempt_;
    Subscription subscription_;
};

}  // namespace tessivo
