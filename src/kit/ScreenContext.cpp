#include "kit/ScreenContext.h"

#include <QQmlEngine>
#include <QVariant>

#include "platform/StayAwake.h"

namespace tessivo {
namespace {

constexpr char propertyName[] = "tessivoScreenContext";

}  // namespace

void ScreenContext::keepAwake(const QObject* reason, bool active) {
    if (active) {
        reasonsToStayAwake.insert(reason);
    } else {
        reasonsToStayAwake.erase(reason);
    }
    platform.stayAwake.set(!reasonsToStayAwake.empty());
}

void setScreenContext(QQmlEngine& engine, ScreenContext& context) {
    engine.setProperty(propertyName, QVariant::fromValue(static_cast<void*>(&context)));
}

ScreenContext& screenContextOf(const QQmlEngine& engine) {
    auto* context = static_cast<ScreenContext*>(engine.property(propertyName).value<void*>());
    Q_ASSERT(context);
    return *context;
}

}  // namespace tessivo
