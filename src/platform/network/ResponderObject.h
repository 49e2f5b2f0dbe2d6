#pragma once

#include "platform/network/Responder.h"

#include <string>

namespace tessivo {

/// An object that the responder keeps for this program, such as a browser or a group of services:
/// made once the responder is there, and again a second after anything of it has failed or whenever
/// the responder comes back, until `end`. Nobody waits for any of that. Main thread only.
class ResponderObject final : public QObject {
    Q_OBJECT

public:
    /// `maker` is the responder's method that makes an object with `interface`.
    ResponderObject(Responder& responder, MainQueue& queue, QDBusMessage maker,
                    const char* interface);
    ~ResponderObject() override;

    /// Called each time the object has been made.
    std::function<void()> onMade = [] {};
    /// Called with each signal of the object. May destroy it.
    std::function<void(const QDBusMessage&)> onSignal = [](const QDBusMessage&) {};

    /// Does nothing when it has begun: a responder that hangs finds no pile of calls.
    void begin();
    void end();
    void fail();
    bool isMade() const { return !path_.isEmpty(); }
    /// Which responder made it; another one after each of its restarts.
    std::string responder() const { return daemon_.toStdString(); }

    QDBusMessage method(const char* name, const QVariantList& arguments = {}) const;
    /// Makes a call that the object depends on, be it to the object or not. A good answer goes to
    /// `next`, and so does the error that a name is taken; any other error is a failure.
    void call(const QDBusMessage& method, Responder::Answer next);
    /// Makes a call whose answer nobody needs.
    void send(const QDBusMessage& method) const { bus_.send(method); }

private:
    Q_SLOT void handleSignal(const QDBusMessage& signal);

    Responder& responder_;
    MainQueue& queue_;
    const QDBusMessage maker_;
    const QString interface_;
    bool hasBegun_ = false;
    QDBusConnection bus_;
    QString daemon_;  // that made it: a later one may give another object the same path
    QString path_;
    Lifetime course_;  // from `begin` to a failure or the end
    Subscription subscription_;
};

/// The error of a name that another service has.
bool isCollision(const QDBusMessage& answer);

}  // namespace tessivo
