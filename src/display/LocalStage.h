#pragma once

#include "base/Signal.h"
#include "display/StageContent.h"
#include "model/AppState.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// The stage content of this computer's own display window: the show chosen for display under the
/// live cursor. The time left is that of the active show, as on the live screen.
class LocalStage final : public StageContent {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    static LocalStage* create(QQmlEngine* engine, QJSEngine*);

    explicit LocalStage(AppState& state);

private:
    void update(AppState::Field field);
    void presentAll();

    AppState& state_;
    Subscription subscription_;
};

}  // namespace tessivo
