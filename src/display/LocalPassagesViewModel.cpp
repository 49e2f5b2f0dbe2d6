#include "display/LocalPassagesViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

LocalPassagesViewModel* LocalPassagesViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new LocalPassagesViewModel(screenContextOf(*engine).state);
}

LocalPassagesViewModel::LocalPassagesViewModel(AppState& state)
    : state_(state),
      subscription_(state.didChange.subscribe([this](AppState::Field field) { update(field); })) {
    presentAll();
}

void LocalPassagesViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows || field == AppState::Field::activeShowId) {
        presentAll();
    } else if (field == AppState::Field::activeSongIndex) {
        content_.presentCursor(state_.activeSongIndex());
    }
}

void LocalPassagesViewModel::presentAll() {
    content_.presentShow(state_.activeShow());
    content_.presentCursor(state_.activeSongIndex());
}

}  // namespace tessivo
