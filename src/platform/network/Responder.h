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
#include <string>

class QDBusServiceWatcher;

namespace tessivo {

/// An object that the responder made for this program, such as a browser or a group of services,
/// as its D-Bus interface describes it. Destroying it has the responder free it, without waiting.
class ResponderObject final : public QObject {
    Q_OBJECT

public:
    /// `maker` is the answer that gave the object. It names the very daemon that made it: a later
    /// daemon may give another object the same path.
    ResponderObject(const QDBusConnection& bus, const QDBusMessage& maker, QString interface);
    ~ResponderObject() override;

    /// Called with each signal of the object. May destroy it.
    std::function<void(const QDBusMessage&)> onSignal;

    QDBusMessage method(const QString& name, const QVariantList& arguments = {}) const;

private:
    Q_SLOT void handleSignal(const QDBusMessage& signal);

    QDBusConnection bus_;
    QString daemon_;
    QString path_;
    QString interface_;
};

/// The system's DNS-SD responder, Avahi, over the message bus (its interfaces are those in
/// /usr/share/dbus-1/interfaces). Every call is answered in a later turn, however long the
/// responder takes: nobody ever waits for it. Main thread only.
class Responder final : public QObject {
    Q_OBJECT

public:
    using Answer = std::function<void(const QDBusMessage&)>;

    /// How long after a failure the same is tried again, in seconds.
    static constexpr double retryDelay = 1.0;

    /// Waits for the message bus, where there is one, to take the program in.
    explicit Responder(MainQueue& queue);
    ~Responder() override;

    bool isRunning() const { return hostName_.has_value(); }
    /// The computer's name on the network, while the responder is running.
    const std::optional<QString>& hostName() const { return hostName_; }
    /// The responder has gone (its objects with it), has come, or works under another name.
    Signal<> didChange;

    /// A method of the responder itself.
    static QDBusMessage method(const QString& name, const QVariantList& arguments = {});
    /// Calls a method and hands what comes back, which may be an error, to `answer`. No time limit:
    /// a responder that hangs answers when it goes on, and calls to it aren't made twice.
    void call(const QDBusMessage& method, Answer answer);
    /// Calls a method that makes an object with `interface`, and hands it to `take`; none when that
    /// failed.
    void make(const QDBusMessage& method, const QString& interface,
              std::function<void(std::unique_ptr<ResponderObject>)> take);

private:
    Q_SLOT void connectToBus();
    Q_SLOT void handleBusLost();
    Q_SLOT void askState();
    void askHostName();
    void askAgainLater();
    void setHostName(std::optional<QString> name);

    Turns turns_;
    QDBusConnection bus_;
    std::unique_ptr<QDBusServiceWatcher> watcher_;
    std::optional<QString> hostName_;
    Lifetime question_;  // what is asked about the responder itself, one thing at a time
};

}  // namespace tessivo
