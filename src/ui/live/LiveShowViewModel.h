#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/ShowObserver.h"
#include "kit/SongListModel.h"

#include <optional>

namespace tessivo {

/// One show under the live cursor, as the live control screen reads it.
class LiveShowViewModel : public tessivo::ShowObserver {
    Q_OBJECT
    QML_ELEMENT
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
    explicit LiveShowViewModel(QObject* parent = nullptr) : ShowObserver(parent) {}

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
    void contentChanged();
    void countdownChanged();

protected:
    void update(AppState::Field field) override;
    void present() override;

private:
    struct Content {
        std::optional<SongInfo> current;
        bool finished = true;
        int position = 0;
        int songCount = 0;
        int songsWithTimecode = 0;

        friend bool operator==(const Content&, const Content&) = default;
    };

    void updateContent();
    void updateCountdown();

    SongListModel past_;
    SongListModel next_;
    Content content_;
    QString countdown_;
    bool urgent_ = false;
};

}  // namespace tessivo
