#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include "base/Signal.h"
#include "timecode/LtcManager.h"

#include <vector>

namespace tessivo {

/// The levels of all channels of the captured input, each as a slim bar from -60 dBFS to full
/// scale, the decoded one marked. A click chooses another, as do the keys up and down. One item
/// draws all: 64 items that change with each frame would cost more than the rest of the screen.
class ChannelMeters : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int channelCount READ channelCount NOTIFY channelCountChanged)
    /// From 1.
    Q_PROPERTY(int decodedChannel READ decodedChannel NOTIFY decodedChannelChanged)

public:
    explicit ChannelMeters(QQuickItem* parent = nullptr);

    int channelCount() const { return channelCount_; }
    int decodedChannel() const;
    void paint(QPainter* painter) override;

    /// Decodes the channel `step` further on, if there is one.
    Q_INVOKABLE void choose(int step);

Q_SIGNALS:
    void channelCountChanged();
    void decodedChannelChanged();

protected:
    void componentComplete() override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void show();

    LtcManager* manager_ = nullptr;
    Subscription subscription_;
    int channelCount_ = 0;
    std::vector<int> heights_;  ///< in pixels, as drawn last
    QTimer nextLook_;
};

}  // namespace tessivo
