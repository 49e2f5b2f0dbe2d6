#include "platform/network/ResponderObject.h"

#include <QDBusObjectPath>

#include <utility>

namespace tessivo {

ResponderObject::ResponderObject(Responder& responder, MainQueue& queue, QDBusMessage maker,
                                 const char* interface)
    : responder_(responder),
      queue_(queue),
      maker_(std::move(maker)),
      interface_(QLatin1String(interface)),
      bus_(responder.bus()),
      subscription_(responder.didChange.subscribe([this] {
          if (hasBegun_) {
              end();
              begin();
          }
      })) {}

ResponderObject::~ResponderObject() {
    end();
}

void ResponderObject::begin() {
    if (std::exchange(hasBegun_, true) || !responder_.hostName()) {
        return;
    }
    call(maker_, [this](const QDBusMessage& answer) {
        bus_ = responder_.bus();
        daemon_ = answer.service();
        path_ = answer.arguments().value(0).value<QDBusObjectPath>().path();
        bus_.connect(daemon_, path_, interface_, QString(), this, SLOT(handleSignal(QDBusMessage)));
        onMade();
    });
}

void ResponderObject::end() {
    course_.callOff();
    hasBegun_ = false;
    if (isMade()) {
        bus_.disconnect(daemon_, path_, interface_, QString(), this,
                        SLOT(handleSignal(QDBusMessage)));
        bus_.send(method("Free"));
        path_.clear();
    }
}

void ResponderObject::fail() {
    end();
    hasBegun_ = true;
    queue_.postAfter(Responder::retryDelay, course_.guard([this] {
        end();
        begin();
    }));
}

QDBusMessage ResponderObject::method(const char* name, const QVariantList& arguments) const {
    auto message = QDBusMessage::createMethodCall(daemon_, path_, interface_, QLatin1String(name));
    message.setArguments(arguments);
    return message;
}

void ResponderObject::call(const QDBusMessage& method, Responder::Answer next) {
    responder_.call(method,
                    course_.guard([this, next = std::move(next)](const QDBusMessage& answer) {
                        if (answer.type() == QDBusMessage::ErrorMessage && !isCollision(answer)) {
                            fail();
                        } else {
                            next(answer);
                        }
                    }));
}

/// One that was already on its way may come after the end.
void ResponderObject::handleSignal(const QDBusMessage& signal) {
    if (isMade() && signal.path() == path_) {
        callHandler(onSignal, signal);
    }
}

bool isCollision(const QDBusMessage& answer) {
    return answer.errorName() == QLatin1String("org.freedesktop.Avahi.CollisionError");
}

}  // namespace tessivo
