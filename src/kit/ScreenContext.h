#pragma once

#include "base/Signal.h"
#include "kit/ShowHandOvers.h"
#include "platform/Platform.h"
#include "state/Resumption.h"

#include <functional>
#include <set>
#include <string>

class QObject;
class QQmlEngine;

namespace tessivo {

class AppState;

/// What every screen of an engine stands on: the one state, and the outside world.
struct ScreenContext {
    AppState& state;
    Platform platform;
    ShowHandOvers handOvers{state};
    Resumption resumption{state, platform};
    std::set<const QObject*> reasonsToStayAwake = {};
    /// What the admin mode goes on with once it leads: what a station followed until then, or what
    /// a crash broke off.
    std::function<void()> goOn = nullptr;
    /// Emitted with the path of a show file that the desktop is asked to open.
    Signal<std::string> fileRequested = {};

    /// The computer stays awake as long as there is a reason to.
    void keepAwake(const QObject* reason, bool active);
};

/// `context` outlives the engine.
void setScreenContext(QQmlEngine& engine, ScreenContext& context);
ScreenContext& screenContextOf(const QQmlEngine& engine);

}  // namespace tessivo
