#include "kit/BlankPointer.h"

namespace tessivo {

void BlankPointer::setTarget(QQuickWindow* target) {
    if (target != target_) {
        target_ = target;
        apply();
    }
}

void BlankPointer::setActive(bool active) {
    if (active != active_) {
        active_ = active;
        apply();
    }
}

void BlankPointer::apply() {
    if (target_) {
        if (active_) {
            target_->setCursor(Qt::BlankCursor);
        } else {
            target_->unsetCursor();
        }
    }
    Q_EMIT changed();
}

}  // namespace tessivo
