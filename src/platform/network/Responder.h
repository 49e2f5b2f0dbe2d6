#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantList>

#include "base/Lifetime.h"
#include "base/Signal.h"
#include "platform/Turns.h"

#include <functional>
#include <memory>
#include <optional>

class QDBusServiceWatcher;

namespace tessivo {

/// The system's DNS-SD responder, Avahi, over the message bus (its interfaces are described in
/// /usr/share/dbus-1/interfaces). Every call is answered in a later turn, however long the
/// responder takes: nobody ever waits for it. Main thread only.
class Responder final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(const QDBusMessage&)>;

    /// From a failure to the next attempt, in seconds.
    static constexpr double retryDelay = 1.0;

    /// Waits for the message bus, where there is one, to take the program in.
    explicit Responder(MainQueue& queue);
    ~Responder() override;

    /// The computer's name on the network; none while there is no responder.
    const std::optional<QString>& hostName() const { return hostName_; }
    /// The responder has gone, and its objects with it, or it has come.
    Signal<> didChange;

    /// The connection to the bus, another one after each restart of the bus.
    const QDBusConnection& bus() const { return bus_; }
    /// A method of the responder itself.
    static QDBusMessage method(const char* name, const QVariantList& arguments = {});
    /// Calls a method of the responder or of one of its objects, and hands what comes back, which
    /// may be an error, to `answer`. There is no time limit: a responder that hangs answers when it
    /// goes on, and needn't be asked twice.
    void call(const QDBusMessage& method, Answer answer);

private:
    Q_SLOT void connectToBus();
    Q_SLOT void handleBusLost();
    Q_SLOT void askHostName();
    void setHostName(std::optional<QString> name);

    Turns turns_;
    QDBusConnection bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    std::optional<QString> hostName_;
    Lifetime question_;
};

}  // namespace tessivo
