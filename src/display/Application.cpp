#include "display/Application.h"

#include <QQmlEngine>
#include <QVariant>

#include "platform/StayAwake.h"

namespace tessivo {
namespace {

constexpr char propertyName[] = "tessivoApplication";

}  // namespace

void Application::keepAwake(const QObject* reason, bool active) {
    if (active) {
        reasonsToStayAwake.insert(reason);
    } else {
        reasonsToStayAwake.erase(reason);
    }
    platform.stayAwake.set(!reasonsToStayAwake.empty());
}

void setApplication(QQmlEngine& engine, Application& application) {
    engine.setProperty(propertyName, QVariant::fromValue(static_cast<void*>(&application)));
}

Application& applicationOf(const QQmlEngine& engine) {
    auto* application = static_cast<Application*>(engine.property(propertyName).value<void*>());
    Q_ASSERT(application);
    return *application;
}

}  // namespace tessivo
