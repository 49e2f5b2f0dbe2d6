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
    return new ShellViewModel(screenContextOf(*engine));
}

ShellViewModel::ShellViewModel(ScreenContext& context)
    : state_(context.state),
      journal_(context.platform.journal),
      stateChanges_(state_.didChange.subscribe([this](AppState::Field field) {
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
      })),
      fileRequests_(context.fileRequested.subscribe(
          [this](const std::string& path) { openShowFile(path); })) {}

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

void ShellViewModel::openShowFile(const std::string& path) {
    Q_EMIT summoned();
    bool isToldWhy = false;
    const auto subscription = state_.didChange.subscribe([&](AppState::Field field) {
        isToldWhy = isToldWhy || field == AppState::Field::lastFileError;
    });
    if (state_.openShowFile(path)) {
        Q_EMIT showOpened(toShownText(state_.activeShow()->name));
    } else if (state_.isLocked()) {
        Q_EMIT fileRefused(
            QStringLiteral("La vue live est verrouillée\u00A0: aucun autre show n'est ouvert."));
    } else if (!isToldWhy) {
        Q_EMIT fileRefused(
            QStringLiteral("Ce fichier n'est pas un show que Tessivo peut lire\u00A0: ") +
            toShownText(path));
    }
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
