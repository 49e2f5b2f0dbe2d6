#include "ui/Desk.h"

#include <QQmlEngine>
#include <QTimer>

#include "display/Application.h"
#include "display/SongInfo.h"

#include <utility>

namespace tessivo {

Desk* Desk::create(QQmlEngine* engine, QJSEngine*) {
    return new Desk(applicationOf(*engine).state);
}

Desk::Desk(AppState& state)
    : state_(state), subscription_(state.didChange.subscribe([this](AppState::Field field) {
          switch (field) {
              case AppState::Field::shows:
              case AppState::Field::activeShowId:
                  Q_EMIT activeShowChanged();
                  break;
              case AppState::Field::autoAdvanceEnabled:
                  Q_EMIT autoAdvanceEnabledChanged();
                  break;
              default:
                  break;
          }
      })) {}

QString Desk::activeShowId() const {
    const Show* show = state_.activeShow();
    return show ? toQString(show->id.toText()) : QString();
}

QString Desk::activeShowName() const {
    const Show* show = state_.activeShow();
    return show ? toQString(show->name) : QString();
}

void Desk::onNextTurn(std::function<void()> command) {
    QTimer::singleShot(0, this, std::move(command));
}

}  // namespace tessivo
