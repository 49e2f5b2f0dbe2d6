#include "ui/live/ChannelMeters.h"

#include <QMouseEvent>
#include <QPainter>
#include <QQmlEngine>

#include "kit/ScreenContext.h"
#include "state/AppState.h"
#include "style/Colors.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessivo {
namespace {

constexpr int barWidth = 5;
constexpr int barDistance = 8;
constexpr int markHeight = 2;
constexpr int lookMilliseconds = 50;
constexpr float leastDecibels = -60.0F;

int heightOf(float level, int whole) {
    const float decibels = 20.0F * std::log10(std::max(level, 1e-9F));
    return static_cast<int>(std::lround(std::clamp(1.0F - decibels / leastDecibels, 0.0F, 1.0F) *
                                        static_cast<float>(whole)));
}

}  // namespace

ChannelMeters::ChannelMeters(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    nextLook_.setSingleShot(true);
    nextLook_.setInterval(lookMilliseconds);
    connect(&nextLook_, &QTimer::timeout, this, &ChannelMeters::show);
}

void ChannelMeters::componentComplete() {
    QQuickPaintedItem::componentComplete();
    manager_ = &screenContextOf(*qmlEngine(this)).state.ltcManager();
    subscription_ = manager_->didChange.subscribe([this](LtcManager::Field field) {
        if (field == LtcManager::Field::levelsPerChannel && !nextLook_.isActive()) {
            nextLook_.start();
        } else if (field == LtcManager::Field::selectedChannelIndex) {
            Q_EMIT decodedChannelChanged();
            update();
        }
    });
    show();
}

int ChannelMeters::decodedChannel() const {
    return manager_ ? static_cast<int>(std::min<std::int64_t>(manager_->selectedChannelIndex(),
                                                              channelCount_ - 1)) +
                          1
                    : 0;
}

void ChannelMeters::show() {
    const std::vector<float>& levels = manager_->levelsPerChannel();
    const int whole = static_cast<int>(height()) - markHeight - 1;
    std::vector<int> heights(levels.size());
    std::ranges::transform(levels, heights.begin(),
                           [&](float level) { return heightOf(level, whole); });
    if (heights == heights_) {
        return;
    }
    heights_ = std::move(heights);
    if (const int count = static_cast<int>(heights_.size()); count != channelCount_) {
        channelCount_ = count;
        setImplicitWidth(count * barDistance);
        Q_EMIT channelCountChanged();
        Q_EMIT decodedChannelChanged();
    }
    update();
}

void ChannelMeters::paint(QPainter* painter) {
    const Colors colors;
    const int whole = static_cast<int>(height()) - markHeight - 1;
    for (int i = 0; i < channelCount_; ++i) {
        const int left = i * barDistance;
        const int level = heights_[static_cast<std::size_t>(i)];
        const bool isDecoded = i + 1 == decodedChannel();
        painter->fillRect(left, 0, barWidth, whole, colors.pvLine);
        painter->fillRect(left, whole - level, barWidth, level,
                          isDecoded ? colors.pvGreen : colors.pvPaperFaint);
        if (isDecoded) {
            painter->fillRect(left, whole + 1, barWidth, markHeight, colors.pvAmber);
        }
    }
}

void ChannelMeters::mousePressEvent(QMouseEvent* event) {
    const int channel = static_cast<int>(event->position().x()) / barDistance;
    choose(channel + 1 - decodedChannel());
}

void ChannelMeters::choose(int step) {
    const int channel = decodedChannel() + step;
    if (channel >= 1 && channel <= channelCount_) {
        manager_->setSelectedChannelIndex(channel - 1);
    }
}

}  // namespace tessivo
