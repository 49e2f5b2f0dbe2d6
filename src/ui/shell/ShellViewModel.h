#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "platform/Journal.h"
#include "state/AppState.h"

#include <functional>

class QJSEngine;
class QQmlEngine;

namespace tessivo {

struct ScreenContext;

/// The operator's desk: the application state as the shell reads it, which show is open, and the
/// commands.
class ShellViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// Empty when no show is active.
    Q_PROPERTY(QString activeShowId READ activeShowId NOTIFY activeShowChanged)
    Q_PROPERTY(bool keepsShows READ keepsShows NOTIFY keepsShowsChanged)
    Q_PROPERTY(bool locked READ locked WRITE setLocked NOTIFY lockedChanged)
    Q_PROPERTY(bool updateAvailable READ updateAvailable NOTIFY updateChanged)
    /// Whether the newest version couldn't be learned.
    Q_PROPERTY(bool updateCheckFailed READ updateCheckFailed NOTIFY updateChanged)
    Q_PROPERTY(QString latestUpdateVersion READ latestUpdateVersion NOTIFY updateChanged)
    Q_PROPERTY(bool autoAdvanceEnabled READ autoAdvanceEnabled WRITE setAutoAdvanceEnabled NOTIFY
                   autoAdvanceEnabledChanged)

public:
    static ShellViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit ShellViewModel(ScreenContext& context);

    QString activeShowId() const;
    bool keepsShows() const { return state_.keepsShows(); }
    bool autoAdvanceEnabled() const { return state_.autoAdvanceEnabled(); }
    bool locked() const { return state_.isLocked(); }
    bool updateAvailable() const { return state_.updateAvailable(); }
    bool updateCheckFailed() const { return state_.updater().hasFailed(); }
    QString latestUpdateVersion() const;
    void setLocked(bool locked) { state_.setLocked(locked); }
    void setAutoAdvanceEnabled(bool enabled) { state_.setAutoAdvanceEnabled(enabled); }

    // These may show a panel. It opens on the next turn, once the menu that asked for it has
    // closed, or the menu would stay drawn and keep the keyboard.
    Q_INVOKABLE void saveCurrentShow() {
        onNextTurn([this] { state_.saveCurrentShow(); });
    }
    Q_INVOKABLE void saveCurrentShowAs() {
        onNextTurn([this] { state_.saveCurrentShowAs(); });
    }
    Q_INVOKABLE void openShow();
    /// Returns to where a show is chosen.
    Q_INVOKABLE void closeShow() { state_.setActiveShowId(std::nullopt); }

    Q_INVOKABLE void goNext() { state_.goNext(); }
    Q_INVOKABLE void goPrev() { state_.goPrev(); }
    /// Shows the active show in the stage display window.
    Q_INVOKABLE void openDisplay();
    /// Looks for a newer version in the background.
    Q_INVOKABLE void checkForUpdateInformation() { state_.updater().checkForUpdateInformation(); }
    /// Looks again and tells the operator about it.
    Q_INVOKABLE void checkForUpdates();

    /// Shows the journal of this evening in the program that the desktop has for texts.
    Q_INVOKABLE void openJournal();

Q_SIGNALS:
    void activeShowChanged();
    void keepsShowsChanged();
    void autoAdvanceEnabledChanged();
    void lockedChanged();
    void updateChanged();
    void displayRequested();
    void updateRequested();
    void showOpened(const QString& name);
    /// The desktop has turned to this program.
    void summoned();
    /// A show file wasn't opened or written; `reason` is a sentence.
    void fileRefused(const QString& reason);
    /// No program opens the journal, which is this file.
    void journalUnopened(const QString& file);

private:
    void onNextTurn(std::function<void()> command);
    /// One that the desktop asks for may be anything, unlike one that was chosen in a panel: a
    /// refusal is told.
    void openShowFile(const std::string& path);

    AppState& state_;
    const Journal& journal_;
    Subscription stateChanges_;
    Subscription fileRequests_;
};

}  // namespace tessivo
