#include "ui/paper/PaperParagraph.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace tessivo {
namespace {

/// Whether the letters merely stand side by side, as in French, Greek or Russian.
bool areLettersSimple(const QString& text) {
    return std::ranges::all_of(text, [](QChar letter) {
        const char16_t code = letter.unicode();
        return code < 0x300 || (code >= 0x370 && code < 0x530) || (code >= 0x2010 && code < 0x2300);
    });
}

}  // namespace

QFont paperFont(const QString& text, int size, bool isBold) {
    QFont font(QStringLiteral("Inter"));
    font.setPixelSize(size);
    font.setWeight(isBold ? QFont::Bold : QFont::Normal);
    font.setHintingPreference(QFont::PreferNoHinting);
    // The forms that the font has for signs between digits belong to no character: who searches a
    // PDF for 20:30 wouldn't find it.
    if (areLettersSimple(text)) {
        font.setStyleStrategy(QFont::PreferNoShaping);
    }
    return font;
}

PaperParagraph::PaperParagraph(const QString& text, const QFont& font, double width, int limit) {
    const double available = width * fontUnitsPerMillimetre;
    const QFontMetricsF metrics(font);
    QTextLayout layout(text, font);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(available);
        const bool isLast = static_cast<int>(lines_.size()) == limit - 1;
        const QString rest = text.mid(line.textStart());
        lines_.append(isLast ? metrics.elidedText(rest, Qt::ElideRight, available)
                             : rest.left(line.textLength()).trimmed());
        if (isLast) {
            break;
        }
    }
    layout.endLayout();
    font_ = font;
    lineHeight_ = metrics.height();
    ascent_ = metrics.ascent();
}

double PaperParagraph::height() const {
    return static_cast<double>(lines_.size()) * lineHeight_ / fontUnitsPerMillimetre;
}

void PaperParagraph::draw(QPainter& painter, QPointF corner) const {
    painter.save();
    painter.translate(corner);
    painter.scale(1.0 / fontUnitsPerMillimetre, 1.0 / fontUnitsPerMillimetre);
    painter.setFont(font_);
    for (qsizetype i = 0; i < lines_.size(); ++i) {
        painter.drawText(QPointF(0, ascent_ + static_cast<double>(i) * lineHeight_), lines_[i]);
    }
    painter.restore();
}

}  // namespace tessivo
