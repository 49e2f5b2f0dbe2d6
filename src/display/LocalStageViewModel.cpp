#include "display/LocalStageViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

LocalStageViewModel* LocalStageViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new LocalStageViewModel(screenContextOf(*engine).state);
}

LocalStageViewModel::LocalStageViewModel(AppState& state)
    : state_(state),
      subscription_(state.didChange.subscribe([this](AppState::Field field) { update(field); })) {
    presentAll();
}

void LocalStageViewModel::update(AppState::Field field) {
    switch (field) {
        case AppState::Field::shows:
        case AppState::Field::activeShowId:
        case AppState::Field::activeSongIndex:
        case AppState::Field::activeDisplayShowId:
            presentAll();
            break;
        case AppState::Field::currentSongStartedAt:
        case AppState::Field::nowTick:
            content_.presentRemaining(state_.currentSongRemainingSeconds());
            break;
        default:
            break;
    }
}

void LocalStageViewModel::presentAll() {
    content_.presentShow(state_.showWithId(state_.activeDisplayShowId()), state_.activeSongIndex());
    content_.presentRemaining(state_.currentSongRemainingSeconds());
}

}  // namespace tessivo
