#include "display/KeepAwake.h"

#include <QQmlEngine>

#include "display/Application.h"

namespace tessivo {

KeepAwake::~KeepAwake() {
    if (application_) {
        application_->keepAwake(this, false);
    }
}

void KeepAwake::componentComplete() {
    application_ = &applicationOf(*qmlEngine(this));
    application_->keepAwake(this, active_);
}

void KeepAwake::setActive(bool active) {
    if (active == active_) {
        return;
    }
    active_ = active;
    if (application_) {
        application_->keepAwake(this, active_);
    }
    Q_EMIT activeChanged();
}

}  // namespace tessivo
