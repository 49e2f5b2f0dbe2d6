#include "platform/network/Responder.h"

#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <limits>
#include <utility>

namespace tessivo {
namespace {

const auto avahiService = QStringLiteral("org.freedesktop.Avahi");
const auto serverPath = QStringLiteral("/");
// The newer one: its browsers don't speak before they are listened to.
const auto serverInterface = QStringLiteral("org.freedesktop.Avahi.Server2");

constexpr int noTimeLimit = std::numeric_limits<int>::max();  // as libdbus takes it

/// Each responder has a connection of its own, which can be opened anew when it is lost.
QString connectionName(const Responder& owner) {
    return QStringLiteral("tessivo-responder-%1").arg(reinterpret_cast<quintptr>(&owner));
}

/// Avahi gives a host's name as a label of a domain name (RFC 1035, 5.1): what isn't a letter, a
/// digit, "-" or "_" stands there as "\" and three decimal digits, or as "\" and itself.
QString unescaped(const QString& label) {
    const QByteArray bytes = label.toUtf8();
    QByteArray result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\\') {
            result += bytes[i];
            continue;
        }
        bool isNumber = false;
        const int code = bytes.mid(i + 1, 3).toInt(&isNumber);
        result += isNumber ? static_cast<char>(code) : bytes.mid(i + 1, 1).append('\0').front();
        i += isNumber ? 3 : 1;
    }
    return QString::fromUtf8(result);
}

}  // namespace

Responder::Responder(MainQueue& queue) : turns_(queue), bus_(connectionName(*this)) {
    connectToBus();
}

Responder::~Responder() {
    QDBusConnection::disconnectFromBus(connectionName(*this));
}

void Responder::connectToBus() {
    bus_ = QDBusConnection::connectToBus(QDBusConnection::SystemBus, connectionName(*this));
    if (!bus_.isConnected()) {
        handleBusLost();
        return;
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                 QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                 SLOT(handleBusLost()));
    bus_.connect(avahiService, serverPath, QString(), QStringLiteral("StateChanged"), this,
                 SLOT(askHostName()));
    watcher_ = std::make_unique<QDBusServiceWatcher>(avahiService, bus_);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this,
            &Responder::askHostName);
    askHostName();
}

void Responder::handleBusLost() {
    question_.callOff();
    watcher_.reset();
    QDBusConnection::disconnectFromBus(connectionName(*this));
    setHostName(std::nullopt);
    turns_.postAfter(retryDelay, [this] { connectToBus(); });
}

/// Whatever was known or asked before may be about a responder that has gone, or that has got
/// another name.
void Responder::askHostName() {
    question_.callOff();
    setHostName(std::nullopt);
    call(method("GetHostName"), question_.guard([this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage) {
            turns_.postAfter(retryDelay, question_.guard([this] { askHostName(); }));
        } else {
            setHostName(unescaped(answer.arguments().value(0).toString()));
        }
    }));
}

void Responder::setHostName(std::optional<QString> name) {
    if (std::exchange(hostName_, std::move(name)) != hostName_) {
        didChange.emit();
    }
}

QDBusMessage Responder::method(const char* name, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(avahiService, serverPath, serverInterface,
                                                  QLatin1String(name));
    message.setArguments(arguments);
    message.setAutoStartService(false);  // not each second, where it is switched off
    return message;
}

void Responder::call(const QDBusMessage& method, Answer answer) {
    if (!bus_.isConnected()) {  // Qt wouldn't answer at all
        turns_.post([method, answer = std::move(answer)] {
            answer(method.createErrorReply(QDBusError::Disconnected, QString()));
        });
        return;
    }
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(method, noTimeLimit), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [watcher, answer = std::move(answer)] {
                watcher->deleteLater();
                answer(watcher->reply());
            });
}

}  // namespace tessivo
