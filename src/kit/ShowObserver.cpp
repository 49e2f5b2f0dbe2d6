#include "kit/ShowObserver.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

Uuid toUuid(const QString& text) {
    return Uuid::fromText(text.toStdString()).value_or(Uuid());
}

void ShowObserver::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    subscription_ = state().didChange.subscribe([this](AppState::Field field) { update(field); });
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
    if (context_) {
        present();
    }
}

AppState& ShowObserver::state() const {
    return context_->state;
}

bool ShowObserver::isGone() const {
    return !state().showWithId(toUuid(showId_));
}

const HandOvers& ShowObserver::handOvers() const {
    return context_->handOvers.of(show());
}

const Show& ShowObserver::show() const {
    static const Show placeholder;
    const Show* found = state().showWithId(toUuid(showId_));
    return found ? *found : placeholder;
}

}  // namespace tessivo
