#include "display/FittedLayout.h"

#include <algorithm>
#include <cmath>

namespace tessivo {
namespace {

constexpr int mostTitleLines = 3;
constexpr int titleLineHeight = 46;
/// As high as the countdown beside it.
constexpr int leastTitleHeight = 58;
/// A line of words is seldom full.
constexpr double titleSlack = 1.1;
/// Rather three lines than a cut; a title that is longer still is drawn smaller, then cut.
constexpr double longestTitleLine = 520.0;
constexpr double leastWidth = 420.0;
constexpr int noGuestsHeight = 30;
/// More of the next song's guests take a second line.
constexpr int guestsOnOneLine = 4;
/// For how many more there are, such as +12.
constexpr double widthOfMore = 60.0;

int widthOf(const QFontMetricsF& metrics, const QString& text, int limit) {
    const QString shown = text.isEmpty() ? QStringLiteral("—") : text;
    return std::min(static_cast<int>(std::ceil(metrics.horizontalAdvance(shown))) + 1, limit);
}

}  // namespace

void FittedLayout::setContent(StageContent* content) {
    if (content == content_) {
        return;
    }
    if (content_) {
        content_->disconnect(this);
    }
    content_ = content;
    if (content_) {
        connect(content_, &StageContent::currentChanged, this, &FittedLayout::measureSong);
    }
    Q_EMIT contentChanged();
    measureSong();
}

void FittedLayout::setRoom(QSizeF room) {
    if (room != room_) {
        room_ = room;
        Q_EMIT roomChanged();
        layOut();
    }
}

void FittedLayout::setFontFamily(const QString& family) {
    if (family != fontFamily_) {
        fontFamily_ = family;
        Q_EMIT fontFamilyChanged();
        measureSong();
    }
}

QFontMetricsF FittedLayout::metrics(int size, QFont::Weight weight) const {
    QFont font(fontFamily_);
    font.setPixelSize(size);
    font.setWeight(weight);
    return QFontMetricsF(font);
}

void FittedLayout::measureSong() {
    if (!content_) {
        return;
    }
    const SongInfo& song = content_->current();
    const QFontMetricsF nameMetrics = metrics(nameSize, QFont::Bold);
    const QFontMetricsF micMetrics = metrics(micSize, QFont::Bold);
    const QFontMetricsF volumeMetrics = metrics(volumeSize, QFont::Normal);
    titleWidth_ = metrics(titleSize, QFont::Bold).horizontalAdvance(song.title);
    nameWidth_ = micWidth_ = iemWidth_ = volumeWidth_ = 0;
    for (const GuestInfo& guest : song.guests) {
        nameWidth_ = std::max(nameWidth_, widthOf(nameMetrics, guest.name, longestName));
        micWidth_ = std::max(micWidth_, widthOf(micMetrics, guest.mic, longestLabel));
        iemWidth_ = std::max(iemWidth_, widthOf(nameMetrics, guest.iem, longestLabel));
        if (!guest.volume.isEmpty()) {
            volumeWidth_ =
                std::max(volumeWidth_, widthOf(volumeMetrics, guest.volume, longestLabel));
        }
    }
    layOut();
}

void FittedLayout::layOut() {
    if (!content_) {
        return;
    }
    Way best;
    const int guests = static_cast<int>(content_->current().guests.size());
    for (int columns = 1; columns <= std::max(1, guests); ++columns) {
        for (int lines = 1; lines <= mostTitleLines; ++lines) {
            const double scale = scaleOf(columns, lines);
            if (scale > best.scale) {
                best = {columns, lines, scale};
            }
        }
    }
    way_ = best;
    Q_EMIT changed();
}

/// How large everything can be in this way.
double FittedLayout::scaleOf(int columns, int titleLines) const {
    const int guests = static_cast<int>(content_->current().guests.size());
    const int rows = (guests + columns - 1) / columns;
    const int guestWidth = nameWidth_ + micWidth_ + iemWidth_ +
                           (volumeWidth_ > 0 ? volumeWidth_ + gap : 0) + 2 * gap + 2 * padding;
    const double titleLine = titleWidth_ / titleLines * titleSlack;
    const double titleWidth =
        titleLines < mostTitleLines ? titleLine : std::min(titleLine, longestTitleLine);
    const double width = std::max({static_cast<double>(columns * guestWidth + (columns - 1) * gap),
                                   titleWidth + gap + timeWidth, leastWidth}) +
                         2 * padding + 2 * margin;
    const int guestsHeight =
        guests == 0 ? noGuestsHeight : rows * (guestHeight + guestGap) - guestGap;
    const int height = margin + padding + markerHeight + titleHeightOf(titleLines) + gap +
                       guestsHeight + padding + std::max(nextHeight(), gap);
    return std::min(room_.width() / width, room_.height() / height);
}

int FittedLayout::titleHeightOf(int lines) {
    return std::max(lines * titleLineHeight, leastTitleHeight);
}

int FittedLayout::nextGuestLines() const {
    const auto guests = content_ ? content_->following().guests.size() : 0;
    return guests == 0 ? 0 : guests > guestsOnOneLine ? 2 : 1;
}

int FittedLayout::nextHeight() const {
    const bool hasNext = content_ && content_->following().position > 0;
    return hasNext ? gap + 2 * padding + nextCaptionHeight + nextTitleHeight +
                         nextGuestHeight * nextGuestLines()
                   : 0;
}

int FittedLayout::nextGuests() const {
    if (!content_ || way_.scale <= 0.0) {
        return 0;
    }
    const QFontMetricsF nextMetrics = metrics(nextSize, QFont::DemiBold);
    const double room = room_.width() / way_.scale - 2 * margin - 2 * padding;
    const auto& guests = content_->following().guests;
    int lines = 1;
    double line = 0.0;
    for (std::size_t i = 0; i < guests.size(); ++i) {
        const double width = widthOf(nextMetrics, guests[i].name, longestName) + nextGuestGap +
                             widthOf(nextMetrics, guests[i].mic, longestLabel) + nextGuestSpacing;
        const bool mayBeCut = lines == nextGuestLines() && i + 1 < guests.size();
        if (line > 0.0 && line + width > (mayBeCut ? room - widthOfMore : room)) {
            if (++lines > nextGuestLines()) {
                return static_cast<int>(i);
            }
            line = 0.0;
        }
        line += width;
    }
    return static_cast<int>(guests.size());
}

}  // namespace tessivo
