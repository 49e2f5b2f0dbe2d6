#pragma once

#include <QPageLayout>
#include <QString>

#include <cstddef>
#include <vector>

class QDate;
class QPagedPaintDevice;

namespace tessivo {

/// One text on paper, with a smaller one below it.
struct PaperCell {
    enum class Frame { none, thin, thick };

    QString text;
    QString detail{};
    bool isBold = false;
    Frame frame = Frame::none;
};

struct PaperColumn {
    QString heading;
    double width = 0.0;  ///< millimetres
};

/// What stays together on a page: cells for the first columns, and lines for those behind. A cell
/// may be as high as all lines are together.
struct PaperRow {
    std::vector<PaperCell> cells;
    std::vector<std::vector<PaperCell>> lines;
};

/// One table of a document, on as many pages as it takes, each with the headings.
struct PaperTable {
    QString title;
    QString summary;  ///< below the title
    QString legend;   ///< at the foot of each page
    QPageLayout::Orientation orientation = QPageLayout::Portrait;
    double leastRowHeight = 0.0;  ///< millimetres
    bool hasGrid = false;         ///< lines between columns too
    std::vector<PaperColumn> columns;
    std::vector<PaperRow> rows;

    /// How much of an A4 page's width the columns can have, in millimetres.
    static double availableWidth(QPageLayout::Orientation orientation);
    /// A cell takes no more lines than this; what doesn't fit ends in "…".
    static constexpr int linesInCell = 3;
};

/// Paints the tables on A4 paper, black on white, under the name and the date, with page numbers
/// through all of them. False when the device couldn't be painted on.
bool paint(QPagedPaintDevice& device, const std::vector<PaperTable>& tables, const QString& name,
           const QDate& date);

}  // namespace tessivo
