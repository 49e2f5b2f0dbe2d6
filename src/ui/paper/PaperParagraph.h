#pragma once

#include <QFont>
#include <QPointF>
#include <QString>
#include <QStringList>

class QPainter;

namespace tessivo {

/// How many units of a font's size are a millimetre: fonts have whole sizes, so text is laid out in
/// tenths.
constexpr double fontUnitsPerMillimetre = 10.0;

/// The font that a text is painted in, `size` tenths of a millimetre large.
QFont paperFont(const QString& text, int size, bool isBold);

/// A text on paper, broken into lines of a width; what `limit` lines can't hold ends in "…".
/// Lengths are millimetres.
class PaperParagraph {
public:
    PaperParagraph(const QString& text, const QFont& font, double width, int limit);

    double height() const;
    void draw(QPainter& painter, QPointF corner) const;

private:
    QFont font_;
    QStringList lines_;
    double lineHeight_ = 0.0;  // tenths
    double ascent_ = 0.0;      // tenths
};

}  // namespace tessivo
