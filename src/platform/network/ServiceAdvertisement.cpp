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
      queue_(queue),
      withdrawals_(withdrawals),
      type_(std::move(type)),
      port_(port),
      subscription_(responder.didChange.subscribe([this] {
          end();
          begin();
      })) {
    qDBusRegisterMetaType<Texts>();
    begin();
}

ServiceAdvertisement::~ServiceAdvertisement() {
    end();
}

void ServiceAdvertisement::begin() {
    if (!responder_.isRunning()) {
        return;
    }
    name_ = *responder_.hostName();
    responder_.make(Responder::method(QStringLiteral("EntryGroupNew")),
                    QStringLiteral("org.freedesktop.Avahi.EntryGroup"),
                    attempt_.guard([this](std::unique_ptr<ResponderObject> group) {
                        if (!group) {
                            beginAgainLater();
                            return;
                        }
                        group_ = std::move(group);
                        group_->onSignal = [this](const QDBusMessage& signal) {
                            handleState(signal.arguments().value(0).toInt());
                        };
                        addService();
                    }));
}

void ServiceAdvertisement::end() {
    attempt_.callOff();
    if (group_) {
        group_.reset();
        withdrawals_.add(name_.toStdString(), type_, Withdrawals::ownSeconds);
    }
}

void ServiceAdvertisement::beginAgainLater() {
    end();
    queue_.postAfter(Responder::retryDelay, attempt_.guard([this] { begin(); }));
}

template <typename Next>
void ServiceAdvertisement::call(const QDBusMessage& method, Next next) {
    responder_.call(method, attempt_.guard([this, next](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage) {
            beginAgainLater();
        } else {
            next(answer);
        }
    }));
}

/// On every network that there is, without a text, with the domain and the host that the responder
/// takes by itself.
void ServiceAdvertisement::addService() {
    const QDBusMessage method =
        group_->method(QStringLiteral("AddService"),
                       {-1, -1, 0U, name_, QString::fromStdString(type_), QString(), QString(),
                        QVariant::fromValue<ushort>(port_), QVariant::fromValue(Texts())});
    responder_.call(method, attempt_.guard([this](const QDBusMessage& answer) {
        if (answer.errorName() == QLatin1String("org.freedesktop.Avahi.CollisionError")) {
            rename();  // another program on this computer has the name
        } else if (answer.type() == QDBusMessage::ErrorMessage) {
            beginAgainLater();
        } else {
            call(group_->method(QStringLiteral("Commit")), [](const QDBusMessage&) {});
        }
    }));
}

void ServiceAdvertisement::rename() {
    call(Responder::method(QStringLiteral("GetAlternativeServiceName"), {name_}),
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
        call(group_->method(QStringLiteral("Reset")), [this](const QDBusMessage&) { rename(); });
    } else if (state == failure) {
        beginAgainLater();
    }
}

}  // namespace tessivo
