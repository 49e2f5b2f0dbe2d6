#include "platform/network/ServiceAdvertisement.h"

#include <QDBusMetaType>

#include <utility>

namespace tessivo {
namespace {

using Texts = QList<QByteArray>;  // of a service, as the bus carries them

// AvahiEntryGroupState
constexpr int established = 2;
constexpr int collision = 3;
constexpr int failure = 4;

}  // namespace

ServiceAdvertisement::ServiceAdvertisement(Responder& responder, MainQueue& queue,
                                           Withdrawals& withdrawals, std::string type,
                                           std::uint16_t port)
    : responder_(responder),
      withdrawals_(withdrawals),
      type_(std::move(type)),
      port_(port),
      group_(responder, queue, Responder::method("EntryGroupNew"),
             "org.freedesktop.Avahi.EntryGroup") {
    qDBusRegisterMetaType<Texts>();
    group_.onMade = [this] { advertise(); };
    group_.onSignal = [this](const QDBusMessage& signal) {
        handleState(signal.arguments().value(0).toInt());
    };
    group_.begin();
}

ServiceAdvertisement::~ServiceAdvertisement() {
    if (hasBegun_ && group_.isMade()) {
        withdrawals_.add(name_.toStdString(), type_, Withdrawals::ownSeconds);
    }
}

void ServiceAdvertisement::begin() {
    hasBegun_ = true;
    advertise();
}

void ServiceAdvertisement::advertise() {
    if (hasBegun_ && group_.isMade()) {
        name_ = *responder_.hostName();
        addService();
    }
}

/// On every network that there is, in the domain and under the host that the responder takes by
/// itself.
void ServiceAdvertisement::addService() {
    const QVariantList arguments{-1,
                                 -1,
                                 0U,
                                 name_,
                                 QString::fromStdString(type_),
                                 QString(),
                                 QString(),
                                 QVariant::fromValue<ushort>(port_),
                                 QVariant::fromValue(Texts())};
    group_.call(group_.method("AddService", arguments), [this](const QDBusMessage& answer) {
        if (isCollision(answer)) {  // with another program on this computer
            rename();
        }
    });
    // Not only when the answer is there: the main thread may be busy with the admin's screens by
    // then. After a collision there is nothing to commit, and the responder says no more than that.
    group_.send(group_.method("Commit"));
}

void ServiceAdvertisement::rename() {
    group_.call(Responder::method("GetAlternativeServiceName", {name_}),
                [this](const QDBusMessage& answer) {
                    name_ = answer.arguments().value(0).toString();
                    addService();
                });
}

void ServiceAdvertisement::handleState(int state) {
    if (state == established) {
        withdrawals_.remove(name_.toStdString(), type_);
    } else if (state == collision) {
        // Another computer has the name: the responder has taken the service back.
        group_.call(group_.method("Reset"), [this](const auto&) { rename(); });
    } else if (state == failure) {
        group_.fail();
    }
}

}  // namespace tessivo
