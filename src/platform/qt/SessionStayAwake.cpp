#include "platform/qt/SessionStayAwake.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

#include <utility>

namespace tessivo {
namespace {

const auto program = QStringLiteral("Tessivo");
const auto reason = QStringLiteral("Affichage d'un show");

QDBusMessage screenSaverCall(const QString& method) {
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.ScreenSaver"),
                                          QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          QStringLiteral("org.freedesktop.ScreenSaver"), method);
}

/// Calls, and hands a good answer to `take` unless `context` is gone by then.
template <typename Value, typename Take>
void ask(QObject& context, const QDBusConnection& bus, const QDBusMessage& call, Take take) {
    auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(call), &context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                     [watcher, take = std::move(take)] {
                         const QDBusPendingReply<Value> reply = *watcher;
                         if (reply.isValid()) {
                             take(reply.value());
                         }
                         watcher->deleteLater();
                     });
}

}  // namespace

SessionStayAwake::SessionStayAwake() = default;

SessionStayAwake::~SessionStayAwake() {
    set(false);
}

void SessionStayAwake::set(bool awake) {
    if (awake == isAwake_) {
        return;
    }
    isAwake_ = awake;
    if (awake) {
        askScreenSaver();
        askLogin();
        return;
    }
    suspendLock_.reset();
    release(std::exchange(cookie_, 0));
}

void SessionStayAwake::askScreenSaver() {
    QDBusMessage call = screenSaverCall(QStringLiteral("Inhibit"));
    call << program << reason;
    ask<quint32>(answers_, QDBusConnection::sessionBus(), call, [this](quint32 cookie) {
        // By the time of the answer the computer may be free to sleep again, or held twice.
        release(std::exchange(cookie_, isAwake_ ? cookie : 0));
        if (!isAwake_) {
            release(cookie);
        }
    });
}

void SessionStayAwake::askLogin() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << program << reason << QStringLiteral("block");
    ask<QDBusUnixFileDescriptor>(
        answers_, QDBusConnection::systemBus(), call, [this](const QDBusUnixFileDescriptor& lock) {
            if (isAwake_) {
                suspendLock_ = std::make_unique<QDBusUnixFileDescriptor>(lock);
            }
        });
}

void SessionStayAwake::release(quint32 cookie) {
    if (cookie != 0) {
        QDBusMessage call = screenSaverCall(QStringLiteral("UnInhibit"));
        call << cookie;
        QDBusConnection::sessionBus().asyncCall(call);
    }
}

}  // namespace tessivo
