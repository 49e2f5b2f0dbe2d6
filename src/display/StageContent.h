#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/SongListModel.h"
#include "live/StagePanel.h"

#include <cstdint>
#include <optional>

namespace tessivo {

/// What a stage display shows, as its screen reads it. The owner presents a show with a cursor
/// whenever either changes, and the time left at each tick; only what differs is announced. Serves
/// the local window and a display station alike.
class StageContent : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(StageContent)
    QML_UNCREATABLE("Filled by the state that it presents")
    Q_PROPERTY(Panel panel READ panel NOTIFY contentChanged)
    Q_PROPERTY(QString showName READ showName NOTIFY contentChanged)
    Q_PROPERTY(tessivo::SongInfo current READ current NOTIFY currentChanged)
    Q_PROPERTY(tessivo::SongInfo following READ following NOTIFY currentChanged)
    Q_PROPERTY(tessivo::SongListModel* past READ past CONSTANT)
    Q_PROPERTY(tessivo::SongListModel* next READ next CONSTANT)
    Q_PROPERTY(QString countdown READ countdown NOTIFY countdownChanged)
    Q_PROPERTY(bool urgent READ urgent NOTIFY urgentChanged)

public:
    enum Panel { WaitingForShow, EmptySetlist, NotStarted, Finished, Songs };
    Q_ENUM(Panel)

    explicit StageContent(QObject* parent = nullptr);

    void presentShow(const Show* show, std::int64_t songIndex);
    void presentRemaining(std::optional<std::int64_t> seconds);

    Panel panel() const { return panel_; }
    const QString& showName() const { return showName_; }
    const SongInfo& current() const { return current_; }
    /// The song after the current one; its position is 0 when there is none.
    const SongInfo& following() const { return following_; }
    SongListModel* past() { return &past_; }
    SongListModel* next() { return &next_; }
    /// M:SS, empty when no time is left to show.
    const QString& countdown() const { return countdown_; }
    bool urgent() const { return urgent_; }

Q_SIGNALS:
    void contentChanged();
    void currentChanged();
    void countdownChanged();
    void urgentChanged();

private:
    Panel panel_ = WaitingForShow;
    QString showName_;
    SongInfo current_;
    SongInfo following_;
    SongListModel past_;
    SongListModel next_;
    QString countdown_;
    bool urgent_ = false;
};

}  // namespace tessivo
