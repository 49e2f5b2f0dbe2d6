#include "display/ApplicationState.h"

#include <QQmlEngine>
#include <QVariant>

namespace tessivo {
namespace {

constexpr char propertyName[] = "tessivoApplicationState";

}  // namespace

void setApplicationState(QQmlEngine& engine, AppState& state) {
    engine.setProperty(propertyName, QVariant::fromValue(static_cast<void*>(&state)));
}

AppState& applicationState(const QQmlEngine& engine) {
    auto* state = static_cast<AppState*>(engine.property(propertyName).value<void*>());
    Q_ASSERT(state);
    return *state;
}

}  // namespace tessivo
