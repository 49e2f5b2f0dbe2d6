#include "ui/paper/PaperTable.h"

#include <QDate>
#include <QFont>
#include <QFontMetricsF>
#include <QLocale>
#include <QMarginsF>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPen>

#include "ui/paper/PaperParagraph.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

namespace tessivo {
namespace {

// All lengths are millimetres.
constexpr double margin = 10.0;
constexpr double headerHeight = 17.0;
constexpr double headingHeight = 6.0;
constexpr double footerHeight = 7.0;
constexpr double cellPadding = 1.3;  // at the sides
constexpr double linePadding = 0.9;  // above and below
constexpr double hairline = 0.1;
constexpr double rule = 0.35;
constexpr double thickFrame = 0.7;

// Sizes of letters, in tenths of a millimetre.
constexpr int nameSize = 56;
constexpr int titleSize = 42;
constexpr int textSize = 30;
constexpr int detailSize = 24;

QSizeF pageSize(QPageLayout::Orientation orientation) {
    const QSizeF upright = QPageSize(QPageSize::A4).size(QPageSize::Millimeter);
    return orientation == QPageLayout::Portrait ? upright : upright.transposed();
}

/// A cell laid out in its column.
struct LaidCell {
    LaidCell(const PaperCell& cell, double cellWidth)
        : text(cell.text, paperFont(cell.text, textSize, cell.isBold), cellWidth - 2 * cellPadding,
               PaperTable::linesInCell),
          detail(cell.detail, paperFont(cell.detail, detailSize, false),
                 cellWidth - 2 * cellPadding, 1),
          hasDetail(!cell.detail.isEmpty()),
          frame(cell.frame) {}

    double height() const {
        return text.height() + (hasDetail ? detail.height() : 0.0) + 2 * linePadding;
    }

    void draw(QPainter& painter, const QRectF& area) const {
        const QPointF corner = area.topLeft() + QPointF(cellPadding, linePadding);
        text.draw(painter, corner);
        if (hasDetail) {
            detail.draw(painter, corner + QPointF(0, text.height()));
        }
        if (frame != PaperCell::Frame::none) {
            const double thickness = frame == PaperCell::Frame::thick ? thickFrame : rule;
            painter.setPen(QPen(Qt::black, thickness, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
            const double inset = thickness / 2 + 0.2;
            painter.drawRect(area.adjusted(inset, inset, -inset, -inset));
        }
    }

    PaperParagraph text;
    PaperParagraph detail;
    bool hasDetail;
    PaperCell::Frame frame;
};

using LaidLine = std::vector<LaidCell>;

double heightOf(const LaidLine& line) {
    double height = 0.0;
    for (const LaidCell& cell : line) {
        height = std::max(height, cell.height());
    }
    return height;
}

LaidLine layOut(const std::vector<PaperCell>& cells, std::span<const PaperColumn> columns) {
    LaidLine line;
    line.reserve(cells.size());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line.emplace_back(cells[i], columns[i].width);
    }
    return line;
}

void draw(QPainter& painter, const LaidLine& line, std::span<const PaperColumn> columns,
          QPointF corner, double height) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        line[i].draw(painter, QRectF(corner, QSizeF(columns[i].width, height)));
        corner.rx() += columns[i].width;
    }
}

/// A row laid out in its table.
struct LaidRow {
    LaidRow(const PaperRow& row, const PaperTable& table)
        : cells(layOut(row.cells, table.columns)), height(table.leastRowHeight) {
        double linesHeight = 0.0;
        for (const std::vector<PaperCell>& line : row.lines) {
            lines.push_back(layOut(line, std::span(table.columns).subspan(cells.size())));
            linesHeight += heightOf(lines.back());
        }
        height = std::max({height, heightOf(cells), linesHeight});
    }

    void draw(QPainter& painter, const PaperTable& table, QPointF corner) const {
        const std::span columns(table.columns);
        tessivo::draw(painter, cells, columns, corner, height);
        for (std::size_t i = 0; i < cells.size(); ++i) {
            corner.rx() += columns[i].width;
        }
        for (const LaidLine& line : lines) {
            tessivo::draw(painter, line, columns.subspan(cells.size()), corner, heightOf(line));
            corner.ry() += heightOf(line);
        }
    }

    LaidLine cells;
    std::vector<LaidLine> lines;
    double height;
};

/// What stands on one page.
struct Page {
    const PaperTable* table;
    std::vector<LaidRow> rows;
};

std::vector<Page> pagesOf(const PaperTable& table) {
    const double room = pageSize(table.orientation).height() - 2 * margin - headerHeight -
                        headingHeight - footerHeight;
    std::vector<Page> pages{{&table, {}}};
    double used = 0.0;
    for (const PaperRow& row : table.rows) {
        LaidRow laid(row, table);
        if (used + laid.height > room && !pages.back().rows.empty()) {
            pages.push_back({&table, {}});
            used = 0.0;
        }
        used += laid.height;
        pages.back().rows.push_back(std::move(laid));
    }
    return pages;
}

enum class Side { left, right };

void drawText(QPainter& painter, const QString& text, int size, bool isBold, QPointF corner,
              double width, Side side) {
    const QFont font = paperFont(text, size, isBold);
    const QFontMetricsF metrics(font);
    const QString shown = metrics.elidedText(text, Qt::ElideRight, width * fontUnitsPerMillimetre);
    const double free = width - metrics.horizontalAdvance(shown) / fontUnitsPerMillimetre;
    PaperParagraph(shown, font, width + 1.0, 1)
        .draw(painter, corner + QPointF(side == Side::right ? free : 0.0, 0.0));
}

void drawLine(QPainter& painter, QPointF from, QPointF to, double thickness) {
    painter.setPen(QPen(Qt::black, thickness));
    painter.drawLine(from, to);
}

/// One page; the painter stands at the corner of what the margins leave.
void drawPage(QPainter& painter, const Page& page, const QString& name, const QString& date,
              const QString& number) {
    const PaperTable& table = *page.table;
    const double width = PaperTable::availableWidth(table.orientation);
    const double height = pageSize(table.orientation).height() - 2 * margin;
    painter.setPen(Qt::black);
    drawText(painter, name, nameSize, true, {0, 0}, width * 0.7, Side::left);
    drawText(painter, table.title, titleSize, true, {width * 0.7, 1}, width * 0.3, Side::right);
    drawText(painter, table.summary, textSize, false, {0, 8.5}, width * 0.7, Side::left);
    drawText(painter, date, textSize, false, {width * 0.7, 8.5}, width * 0.3, Side::right);

    QPointF corner(0, headerHeight);
    for (const PaperColumn& column : table.columns) {
        drawText(painter, column.heading, textSize, true,
                 corner + QPointF(cellPadding, linePadding), column.width - 2 * cellPadding,
                 Side::left);
        corner.rx() += column.width;
    }
    const double right = corner.x();
    const double top = headerHeight + headingHeight;
    drawLine(painter, {0, top}, {right, top}, rule);
    double y = top;
    for (const LaidRow& row : page.rows) {
        row.draw(painter, table, {0, y});
        y += row.height;
        drawLine(painter, {0, y}, {right, y}, hairline);
    }
    if (table.hasGrid) {
        double x = 0.0;
        for (const PaperColumn& column : table.columns) {
            x += column.width;
            drawLine(painter, {x, headerHeight}, {x, y}, hairline);
        }
    }
    const double foot = height - 4.0;
    painter.setPen(Qt::black);
    drawText(painter, table.legend, detailSize, false, {0, foot}, width * 0.8, Side::left);
    drawText(painter, number, textSize, false, {width * 0.8, foot}, width * 0.2, Side::right);
}

}  // namespace

double PaperTable::availableWidth(QPageLayout::Orientation orientation) {
    return pageSize(orientation).width() - 2 * margin;
}

bool paint(QPagedPaintDevice& device, const std::vector<PaperTable>& tables, const QString& name,
           const QDate& date) {
    std::vector<Page> pages;
    for (const PaperTable& table : tables) {
        std::ranges::move(pagesOf(table), std::back_inserter(pages));
    }
    const QString dateText =
        QLocale(QLocale::French).toString(date, QStringLiteral("dddd d MMMM yyyy"));
    QPainter painter;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        // A page takes its orientation when it begins, and the first begins with the painter.
        device.setPageSize(QPageSize(QPageSize::A4));
        device.setPageOrientation(pages[i].table->orientation);
        device.setPageMargins(QMarginsF());
        if (!(i == 0 ? painter.begin(&device) : device.newPage())) {
            return false;
        }
        painter.resetTransform();
        const double dotsPerMillimetre = device.logicalDpiX() / 25.4;
        painter.scale(dotsPerMillimetre, dotsPerMillimetre);
        painter.translate(margin, margin);
        drawPage(painter, pages[i], name, dateText,
                 QStringLiteral("%1/%2").arg(i + 1).arg(pages.size()));
    }
    return painter.end();
}

}  // namespace tessivo
