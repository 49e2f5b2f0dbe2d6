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
              case AppState::Field::updateAvailable:
              case AppState::Field::latestUpdateVersion:
                  Q_EMIT updateChanged();
                  break;
              default:
                  break;
          }
      })) {}

QString Desk::activeShowId() const {
    const Show* show = state_.activeShow();
    return show ? toQString(show->id.toText()) : QString();
}

QString Desk::latestUpdateVersion() const {
    return toQString(state_.latestUpdateVersion().value_or(std::string()));
}

void Desk::openDisplay() {
    state_.setActiveDisplayShowId(state_.activeShowId());
    Q_EMIT displayRequested();
}

void Desk::checkForUpdates() {
    state_.updater().checkForUpdateInformation();
    Q_EMIT updateRequested();
}

void Desk::onNextTurn(std::function<void()> command) {
    QTimer::singleShot(0, this, std::move(command));
}

}  // namespace tessivo
