#pragma once

#include <QFontMetricsF>
#include <QObject>
#include <QPointer>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

#include "display/StageContent.h"

namespace tessivo {

/// How the current song, all its guests with their equipment, the time left and the next song are
/// laid out as large as a screen allows. Widths and heights are added up in the pixels of an
/// unscaled sheet, for each way to break the title and the guests into lines; the way that can be
/// drawn largest wins. So a song is laid out once, and long names give way before equipment does.
class FittedLayout : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(tessivo::StageContent* content READ content WRITE setContent NOTIFY contentChanged)
    /// What the sheet is drawn in, in pixels of the screen.
    Q_PROPERTY(QSizeF room READ room WRITE setRoom NOTIFY roomChanged)
    /// What all texts are written in.
    Q_PROPERTY(QString fontFamily READ fontFamily WRITE setFontFamily NOTIFY fontFamilyChanged)

    /// Pixels of the screen for one of the sheet; all else is in those.
    Q_PROPERTY(double scale READ scale NOTIFY changed)
    Q_PROPERTY(int columns READ columns NOTIFY changed)
    Q_PROPERTY(int titleHeight READ titleHeight NOTIFY changed)
    Q_PROPERTY(int titleLines READ titleLines NOTIFY changed)
    /// How wide the widest microphone, mix and volume are; no volume at all has 0.
    Q_PROPERTY(int micWidth READ micWidth NOTIFY changed)
    Q_PROPERTY(int iemWidth READ iemWidth NOTIFY changed)
    Q_PROPERTY(int volumeWidth READ volumeWidth NOTIFY changed)
    /// With the gap above it; 0 without a next song.
    Q_PROPERTY(int nextHeight READ nextHeight NOTIFY changed)
    /// How many guests of the next song, each with the microphone, have room below its title.
    Q_PROPERTY(int nextGuests READ nextGuests NOTIFY changed)

    Q_PROPERTY(int margin MEMBER margin CONSTANT)
    Q_PROPERTY(int gap MEMBER gap CONSTANT)
    Q_PROPERTY(int padding MEMBER padding CONSTANT)
    Q_PROPERTY(int markerHeight MEMBER markerHeight CONSTANT)
    Q_PROPERTY(int timeWidth MEMBER timeWidth CONSTANT)
    Q_PROPERTY(int guestHeight MEMBER guestHeight CONSTANT)
    Q_PROPERTY(int guestGap MEMBER guestGap CONSTANT)
    Q_PROPERTY(int nextCaptionHeight MEMBER nextCaptionHeight CONSTANT)
    Q_PROPERTY(int nextTitleHeight MEMBER nextTitleHeight CONSTANT)
    Q_PROPERTY(int nextGuestHeight MEMBER nextGuestHeight CONSTANT)
    Q_PROPERTY(int nextGuestGap MEMBER nextGuestGap CONSTANT)
    Q_PROPERTY(int nextGuestSpacing MEMBER nextGuestSpacing CONSTANT)
    Q_PROPERTY(int longestName MEMBER longestName CONSTANT)
    Q_PROPERTY(int longestLabel MEMBER longestLabel CONSTANT)
    // Sizes of letters.
    Q_PROPERTY(int titleSize MEMBER titleSize CONSTANT)
    Q_PROPERTY(int nameSize MEMBER nameSize CONSTANT)
    Q_PROPERTY(int micSize MEMBER micSize CONSTANT)
    Q_PROPERTY(int volumeSize MEMBER volumeSize CONSTANT)
    Q_PROPERTY(int nextSize MEMBER nextSize CONSTANT)

public:
    explicit FittedLayout(QObject* parent = nullptr) : QObject(parent) {}

    StageContent* content() const { return content_; }
    void setContent(StageContent* content);
    QSizeF room() const { return room_; }
    void setRoom(QSizeF room);
    const QString& fontFamily() const { return fontFamily_; }
    void setFontFamily(const QString& family);

    double scale() const { return way_.scale; }
    int columns() const { return way_.columns; }
    int titleHeight() const { return titleHeightOf(way_.titleLines); }
    int titleLines() const { return way_.titleLines; }
    int micWidth() const { return micWidth_; }
    int iemWidth() const { return iemWidth_; }
    int volumeWidth() const { return volumeWidth_; }
    int nextHeight() const;
    int nextGuests() const;

Q_SIGNALS:
    void contentChanged();
    void roomChanged();
    void fontFamilyChanged();
    void changed();

private:
    /// A way to break the title and the guests into lines.
    struct Way {
        int columns = 1;
        int titleLines = 1;
        double scale = 0.0;
    };

    static int titleHeightOf(int lines);

    QFontMetricsF metrics(int size, QFont::Weight weight) const;
    void measureSong();
    void layOut();
    double scaleOf(int columns, int titleLines) const;
    int nextGuestLines() const;

    const int margin = 14, gap = 14, padding = 12;
    const int markerHeight = 20, timeWidth = 150;
    const int guestHeight = 46, guestGap = 6;
    const int nextCaptionHeight = 18, nextTitleHeight = 36, nextGuestHeight = 26;
    const int nextGuestGap = 6, nextGuestSpacing = 16;
    const int longestName = 230, longestLabel = 400;
    const int titleSize = 38, nameSize = 25, micSize = 34, volumeSize = 18, nextSize = 19;

    QPointer<StageContent> content_;
    QSizeF room_;
    QString fontFamily_;
    double titleWidth_ = 0.0;  ///< on one line
    int nameWidth_ = 0;
    int micWidth_ = 0;
    int iemWidth_ = 0;
    int volumeWidth_ = 0;
    Way way_;
};

}  // namespace tessivo
