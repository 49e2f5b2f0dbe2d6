#pragma once

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tessivo {

/// The palette: opaque sRGB colours, the same on every screen and in the system's own panels.
class Colors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor pvBlack MEMBER pvBlack CONSTANT)
    Q_PROPERTY(QColor pvBlack2 MEMBER pvBlack2 CONSTANT)
    Q_PROPERTY(QColor pvBlack3 MEMBER pvBlack3 CONSTANT)
    Q_PROPERTY(QColor pvLine MEMBER pvLine CONSTANT)
    Q_PROPERTY(QColor pvRed MEMBER pvRed CONSTANT)
    Q_PROPERTY(QColor pvRedDim MEMBER pvRedDim CONSTANT)
    Q_PROPERTY(QColor pvAmber MEMBER pvAmber CONSTANT)
    Q_PROPERTY(QColor pvPaper MEMBER pvPaper CONSTANT)
    Q_PROPERTY(QColor pvPaperDim MEMBER pvPaperDim CONSTANT)
    Q_PROPERTY(QColor pvPaperFaint MEMBER pvPaperFaint CONSTANT)
    Q_PROPERTY(QColor pvGreen MEMBER pvGreen CONSTANT)
    Q_PROPERTY(QColor outline MEMBER outline CONSTANT)

public:
    const QColor pvBlack = QColor::fromRgbF(0.039F, 0.035F, 0.031F);
    const QColor pvBlack2 = QColor::fromRgbF(0.075F, 0.071F, 0.067F);
    const QColor pvBlack3 = QColor::fromRgbF(0.11F, 0.102F, 0.094F);
    const QColor pvLine = QColor::fromRgbF(0.173F, 0.161F, 0.145F);
    const QColor pvRed = QColor::fromRgbF(0.91F, 0.2F, 0.165F);
    const QColor pvRedDim = QColor::fromRgbF(0.361F, 0.09F, 0.078F);
    const QColor pvAmber = QColor::fromRgbF(0.91F, 0.635F, 0.227F);
    const QColor pvPaper = QColor::fromRgbF(0.925F, 0.902F, 0.855F);
    const QColor pvPaperDim = QColor::fromRgbF(0.604F, 0.58F, 0.541F);
    const QColor pvPaperFaint = QColor::fromRgbF(0.353F, 0.337F, 0.31F);
    const QColor pvGreen = QColor::fromRgbF(0.31F, 0.58F, 0.408F);

    /// Of what is typed into, chosen from or switched: no brighter than 3 : 1 on pvBlack3 asks for.
    const QColor outline = QColor::fromRgbF(0.42F, 0.4F, 0.37F);

    /// `color` at `opacity` (0 to 1), for tinted surfaces.
    Q_INVOKABLE static QColor withOpacity(QColor color, double opacity) {
        color.setAlphaF(static_cast<float>(opacity));
        return color;
    }
};

}  // namespace tessivo
