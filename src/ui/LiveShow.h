#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "display/SongListModel.h"
#include "model/AppState.h"

#include <optional>

namespace tessivo {

/// One show under the live cursor, as the live control screen reads it.
class LiveShow : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(QString showId READ showId WRITE setShowId NOTIFY showIdChanged)
    Q_PROPERTY(tessivo::SongListModel* past READ past CONSTANT)
    Q_PROPERTY(tessivo::SongListModel* next READ next CONSTANT)
    Q_PROPERTY(bool hasCurrent READ hasCurrent NOTIFY contentChanged)
    Q_PROPERTY(tessivo::SongInfo current READ current NOTIFY contentChanged)
    Q_PROPERTY(bool finished READ finished NOTIFY contentChanged)
    /// The 1-based place shown to the operator.
    Q_PROPERTY(int position READ position NOTIFY contentChanged)
    Q_PROPERTY(int songCount READ songCount NOTIFY contentChanged)
    Q_PROPERTY(int songsWithTimecode READ songsWithTimecode NOTIFY contentChanged)
    /// M:SS, empty when there is no time to show.
    Q_PROPERTY(QString countdown READ countdown NOTIFY countdownChanged)
    Q_PROPERTY(bool urgent READ urgent NOTIFY countdownChanged)

public:
    explicit LiveShow(QObject* parent = nullptr);
    void classBegin() override {}
    void componentComplete() override;

    QString showId() const { return showId_; }
    void setShowId(const QString& showId);
    SongListModel* past() { return &past_; }
    SongListModel* next() { return &next_; }
    bool hasCurrent() const { return content_.current.has_value(); }
    SongInfo current() const { return content_.current.value_or(SongInfo()); }
    bool finished() const { return content_.finished; }
    int position() const { return content_.position; }
    int songCount() const { return content_.songCount; }
    int songsWithTimecode() const { return content_.songsWithTimecode; }
    QString countdown() const { return countdown_; }
    bool urgent() const { return urgent_; }

    /// Moves the cursor to the song at `row` of `next`.
    Q_INVOKABLE void jumpToNext(int row);

Q_SIGNALS:
    void showIdChanged();
    void contentChanged();
    void countdownChanged();

private:
    struct Content {
        std::optional<SongInfo> current;
        bool finished = true;
        int position = 0;
        int songCount = 0;
        int songsWithTimecode = 0;

        friend bool operator==(const Content&, const Content&) = default;
    };

    void update(AppState::Field field);
    void updateContent();
    void updateCountdown();
    /// The show with `showId`, or a placeholder without songs.
    const Show& show() const;

    AppState* state_ = nullptr;  // from componentComplete on
    Subscription subscription_;
    QString showId_;
    SongListModel past_;
    SongListModel next_;
    Content content_;
    QString countdown_;
    bool urgent_ = false;
};

}  // namespace tessivo
