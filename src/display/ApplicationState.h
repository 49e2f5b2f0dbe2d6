#pragma once

class QQmlEngine;

namespace tessivo {

class AppState;

/// The one application state that an engine's screens observe. It outlives the engine.
void setApplicationState(QQmlEngine& engine, AppState& state);
AppState& applicationState(const QQmlEngine& engine);

}  // namespace tessivo
