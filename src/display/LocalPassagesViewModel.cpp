#include "display/LocalPassagesViewModel.h"

#include <QQmlEngine>

#include "kit/ScreenContext.h"

namespace tessivo {

LocalPassagesViewModel* LocalPassagesViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new LocalPassagesViewModel(screenContextOf(*engine));
}

LocalPassagesViewModel::LocalPassagesViewModel(ScreenContext& context)
    : context_(context),
      subscription_(
          context.state.didChange.subscribe([this](AppState::Field field) { update(field); })) {
    presentAll();
}

void LocalPassagesViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows || field == AppState::Field::activeShowId) {
        presentAll();
    } else if (field == AppState::Field::activeSongIndex) {
        content_.presentCursor(context_.state.activeSongIndex());
    }
}

void LocalPassagesViewModel::presentAll() {
    const Show* show = context_.state.activeShow();
    content_.presentShow(show, show ? context_.handOvers.of(*show) : HandOvers());
    content_.presentCursor(context_.state.activeSongIndex());
}

}  // namespace tessivo
