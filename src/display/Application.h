#pragma once

#include "platform/Platform.h"

class QQmlEngine;

namespace tessivo {

class AppState;

/// What every screen of an engine stands on: the one state, and the outside world.
struct Application {
    AppState& state;
    Platform platform;
};

/// `application` outlives the engine.
void setApplication(QQmlEngine& engine, Application& application);
Application& applicationOf(const QQmlEngine& engine);

}  // namespace tessivo
