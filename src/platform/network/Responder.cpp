#include "platform/network/Responder.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <limits>
#include <utility>

namespace tessivo {
namespace {

const auto service = QStringLiteral("org.freedesktop.Avahi");
const auto serverPath = QStringLiteral("/");
// The newer one has the methods that let one listen to an object before it works.
const auto serverInterface = QStringLiteral("org.freedesktop.Avahi.Server2");
const auto busName = QStringLiteral("org.freedesktop.DBus");

constexpr int serverIsRunning = 2;                            // AVAHI_SERVER_RUNNING
constexpr int noTimeLimit = std::numeric_limits<int>::max();  // as libdbus takes it

/// Each owner has a connection of its own: one that is lost can be opened anew.
QString connectionName(const Responder& owner) {
    return QStringLiteral("tessivo-responder-%1").arg(reinterpret_cast<quintptr>(&owner));
}

/// Avahi gives a host's name as a label of a domain name (RFC 1035, 5.1): what isn't a letter, a
/// digit, "-" or "_" stands there as "\" and three decimal digits, or as "\" and itself.
QString unescaped(const QString& label) {
    const QByteArray bytes = label.toUtf8();
    QByteArray result;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        bool isNumber = false;
        const int code = bytes.mid(i + 1, 3).toInt(&isNumber);
        if (bytes[i] == '\\' && isNumber) {
            result += static_cast<char>(code);
            i += 3;
        } else if (bytes[i] == '\\' && i + 1 < bytes.size()) {
            result += bytes[++i];
        } else {
            result += bytes[i];
        }
    }
    return QString::fromUtf8(result);
}

bool isError(const QDBusMessage& answer) {
    return answer.type() == QDBusMessage::ErrorMessage;
}

}  // namespace

ResponderObject::ResponderObject(const QDBusConnection& bus, const QDBusMessage& maker,
                                 QString interface)
    : bus_(bus),
      daemon_(maker.service()),
      path_(maker.arguments().value(0).value<QDBusObjectPath>().path()),
      interface_(std::move(interface)) {
    bus_.connect(daemon_, path_, interface_, QString(), this, SLOT(handleSignal(QDBusMessage)));
}

ResponderObject::~ResponderObject() {
    bus_.send(method(QStringLiteral("Free")));
}

QDBusMessage ResponderObject::method(const QString& name, const QVariantList& arguments) const {
    auto message = QDBusMessage::createMethodCall(daemon_, path_, interface_, name);
    message.setArguments(arguments);
    return message;
}

void ResponderObject::handleSignal(const QDBusMessage& signal) {
    callHandler(onSignal, signal);
}

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
    bus_.connect(service, serverPath, QString(), QStringLiteral("StateChanged"), this,
                 SLOT(askState()));
    watcher_ = std::make_unique<QDBusServiceWatcher>(service, bus_);
    connect(watcher_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, &Responder::askState);
    // Where the responder only starts for somebody who wants it, this program does.
    auto start = QDBusMessage::createMethodCall(busName, QStringLiteral("/org/freedesktop/DBus"),
                                                busName, QStringLiteral("StartServiceByName"));
    start.setArguments({service, 0U});
    bus_.send(start);
    askState();
}

void Responder::handleBusLost() {
    question_.callOff();
    watcher_.reset();
    QDBusConnection::disconnectFromBus(connectionName(*this));
    setHostName(std::nullopt);
    turns_.postAfter(retryDelay, [this] { connectToBus(); });
}

/// Whatever was asked before may be about a responder that has gone.
void Responder::askState() {
    question_.callOff();
    setHostName(std::nullopt);
    call(method(QStringLiteral("GetState")), question_.guard([this](const QDBusMessage& answer) {
        if (isError(answer)) {
            askAgainLater();
        } else if (answer.arguments().value(0).toInt() == serverIsRunning) {
            askHostName();
        }  // else it tells by a signal when it is running
    }));
}

void Responder::askHostName() {
    call(method(QStringLiteral("GetHostName")), question_.guard([this](const QDBusMessage& answer) {
        if (isError(answer)) {
            askAgainLater();
        } else {
            setHostName(unescaped(answer.arguments().value(0).toString()));
        }
    }));
}

void Responder::askAgainLater() {
    turns_.postAfter(retryDelay, question_.guard([this] { askState(); }));
}

void Responder::setHostName(std::optional<QString> name) {
    if (std::exchange(hostName_, std::move(name)) != hostName_) {
        didChange.emit();
    }
}

QDBusMessage Responder::method(const QString& name, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, serverPath, serverInterface, name);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return message;
}

void Responder::call(const QDBusMessage& method, Answer answer) {
    if (!bus_.isConnected()) {  // else Qt wouldn't answer at all
        turns_.post([answer = std::move(answer), method] {
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

void Responder::make(const QDBusMessage& method, const QString& interface,
                     std::function<void(std::unique_ptr<ResponderObject>)> take) {
    call(method, [this, interface, take = std::move(take)](const QDBusMessage& answer) {
        take(isError(answer) ? nullptr
                             : std::make_unique<ResponderObject>(bus_, answer, interface));
    });
}

}  // namespace tessivo
