#include "kit/ShowObserver.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

Uuid toUuid(const QString& text) {
    return Uuid::fromText(text.toStdString()).value_or(Uuid());
}

void ShowObserver::componentComplete() {
    state_ = &screenContextOf(*qmlEngine(this)).state;
    subscription_ = state_->didChange.subscribe([this](AppState::Field field) { update(field); });
    present();
}

void ShowObserver::setShowId(const QString& showId) {
    if (showId == showId_) {
        return;
    }
    showId_ = showId;
    Q_EMIT showIdChanged();
    presentAnew();
}

void ShowObserver::presentAnew() {
    if (state_) {
        present();
    }
}

const Show& ShowObserver::show() const {
    static const Show placeholder;
    const Show* found = state_->showWithId(toUuid(showId_));
    return found ? *found : placeholder;
}

}  // namespace tessivo
