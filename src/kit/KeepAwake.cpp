#include "kit/KeepAwake.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

KeepAwake::~KeepAwake() {
    if (context_) {
        context_->keepAwake(this, false);
    }
}

void KeepAwake::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    context_->keepAwake(this, active_);
}

void KeepAwake::setActive(bool active) {
    if (active == active_) {
        return;
    }
    active_ = active;
    if (context_) {
        context_->keepAwake(this, active_);
    }
    Q_EMIT activeChanged();
}

}  // namespace tessivo
