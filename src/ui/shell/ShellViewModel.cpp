#include "ui/shell/ShellViewModel.h"

#include <QDesktopServices>
#include <QQmlEngine>
#include <QTimer>
#include <QUrl>

#include "kit/ScreenContext.h"
#include "kit/ShownText.h"

#include <utility>

namespace tessivo {

ShellViewModel* ShellViewModel::create(QQmlEngine* engine, QJSEngine*) {
    const ScreenContext& context = screenContextOf(*engine);
    return new ShellViewModel(context.state, context.platform.journal);
}

ShellViewModel::ShellViewModel(AppState& state, const Journal& journal)
    : state_(state),
      journal_(journal),
      subscription_(state.didChange.subscribe([this](AppState::Field field) {
          switch (field) {
              case AppState::Field::shows:
              case AppState::Field::activeShowId:
                  Q_EMIT activeShowChanged();
                  break;
              case AppState::Field::keepsShows:
                  Q_EMIT keepsShowsChanged();
                  break;
              case AppState::Field::autoAdvanceEnabled:
                  Q_EMIT autoAdvanceEnabledChanged();
                  break;
              case AppState::Field::isLocked:
                  Q_EMIT lockedChanged();
                  break;
              case AppState::Field::updateAvailable:
              case AppState::Field::latestUpdateVersion:
                  Q_EMIT updateChanged();
                  break;
              case AppState::Field::lastFileError:
                  Q_EMIT fileRefused(toQString(state_.lastFileError().value_or(std::string())));
                  break;
              default:
                  break;
          }
      })) {}

QString ShellViewModel::activeShowId() const {
    const Show* show = state_.activeShow();
    return show ? toQString(show->id.toText()) : QString();
}

QString ShellViewModel::latestUpdateVersion() const {
    return toQString(state_.latestUpdateVersion().value_or(std::string()));
}

void ShellViewModel::openShow() {
    onNextTurn([this] {
        if (state_.openShow()) {
            Q_EMIT showOpened(toShownText(state_.activeShow()->name));
        }
    });
}

void ShellViewModel::openDisplay() {
    state_.setActiveDisplayShowId(state_.activeShowId());
    Q_EMIT displayRequested();
}

void ShellViewModel::checkForUpdates() {
    state_.updater().checkForUpdateInformation();
    Q_EMIT updateRequested();
}

void ShellViewModel::openJournal() {
    const QString file = toQString(journal_.file());
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        Q_EMIT journalUnopened(file);
    }
}

void ShellViewModel::onNextTurn(std::function<void()> command) {
    QTimer::singleShot(0, this, std::move(command));
}

}  // namespace tessivo
