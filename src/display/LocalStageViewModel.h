#pragma once

#include "base/Signal.h"
#include "display/StageContent.h"
#include "state/AppState.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

/// The stage content of this computer's own display window: the show chosen for display under the
/// live cursor. The time left is that of the active show, as on the live screen.
class LocalStageViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(tessivo::StageContent* content READ content CONSTANT)

public:
    static LocalStageViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit LocalStageViewModel(AppState& state);

    StageContent* content() { return &content_; }

private:
    void update(AppState::Field field);
    void presentAll();

    AppState& state_;
    StageContent content_;
    Subscription subscription_;
};

}  // namespace tessivo
