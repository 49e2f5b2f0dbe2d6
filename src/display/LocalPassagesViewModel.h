#pragma once

#include "base/Signal.h"
#include "display/PassagesContent.h"
#include "state/AppState.h"

class QJSEngine;
class QQmlEngine;

namespace tessivo {

struct ScreenContext;

/// The passages of this computer's own active show.
class LocalPassagesViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(tessivo::PassagesContent* content READ content CONSTANT)

public:
    static LocalPassagesViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit LocalPassagesViewModel(ScreenContext& context);

    PassagesContent* content() { return &content_; }

private:
    void update(AppState::Field field);
    void presentAll();

    ScreenContext& context_;
    PassagesContent content_;
    Subscription subscription_;
};

}  // namespace tessivo
