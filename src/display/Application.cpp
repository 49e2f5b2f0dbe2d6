#include "display/Application.h"

#include <QQmlEngine>
#include <QVariant>

namespace tessivo {
namespace {

constexpr char propertyName[] = "tessivoApplication";

}  // namespace

void setApplication(QQmlEngine& engine, Application& application) {
    engine.setProperty(propertyName, QVariant::fromValue(static_cast<void*>(&application)));
}

Application& applicationOf(const QQmlEngine& engine) {
    auto* application = static_cast<Application*>(engine.property(propertyName).value<void*>());
    Q_ASSERT(application);
    return *application;
}

}  // namespace tessivo
