#include "app/WindowIcon.h"

#include <QPainter>
#include <QPixmap>

#include "style/Colors.h"

namespace tessivo {
namespace {

/// Three lines of a list on the accent colour, the first one longer.
QPixmap drawn(int size) {
    const Colors colors;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(size / 16.0, size / 16.0);
    painter.setBrush(colors.pvRed);
    painter.drawRoundedRect(QRectF(0, 0, 16, 16), 3, 3);
    painter.setBrush(colors.pvPaper);
    painter.drawRect(QRectF(3, 4, 10, 2));
    painter.drawRect(QRectF(3, 7, 7, 2));
    painter.drawRect(QRectF(3, 10, 7, 2));
    return pixmap;
}

}  // namespace

QIcon windowIcon() {
    QIcon icon;
    for (const int size : {16, 32, 48, 128}) {
        icon.addPixmap(drawn(size));
    }
    return icon;
}

}  // namespace tessivo
