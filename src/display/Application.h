#pragma once

#include "platform/Platform.h"

#include <set>

class QObject;
class QQmlEngine;

namespace tessivo {

class AppState;

/// What every screen of an engine stands on: the one state, and the outside world.
struct Application {
    AppState& state;
    Platform platform;
    std::set<const QObject*> reasonsToStayAwake = {};

    /// The computer stays awake as long as there is a reason to.
    void keepAwake(const QObject* reason, bool active);
};

/// `application` outlives the engine.
void setApplication(QQmlEngine& engine, Application& application);
Application& applicationOf(const QQmlEngine& engine);

}  // namespace tessivo
