#include "display/PassagesContent.h"

#include "kit/ShownText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace tessivo {
namespace {

// A message from the network may hold any number of both.
constexpr std::size_t songsShown = 500;
constexpr std::size_t microphonesShown = 60;

constexpr int passageLine = 2;  // logical pixels
constexpr int tightLine = 5;

PassageCell cellFor(const HandOver& use) {
    PassageCell cell;
    cell.names = toShownText(namesText(use.to));
    cell.word = toQString(handOverWord(use.kind));
    cell.isChange = use.kind > HandOver::Kind::first;
    cell.isCollision = use.kind == HandOver::Kind::collision;
    return cell;
}

/// Draws the line of a change of hands that ends in the song at `end`.
void drawLine(std::vector<PassageRow>& rows, std::size_t end, const HandOver& use) {
    const std::size_t begin = end - use.songsBetween - 1;
    const int thickness = use.songsBetween == 0 ? tightLine : passageLine;
    for (std::size_t song = begin; song <= end; ++song) {
        PassageCell& cell = rows[song].cells[use.equipment];
        (song == begin ? cell.lineBelow : cell.lineAbove) = thickness;
        if (song != begin && song != end) {
            cell.lineBelow = thickness;
        }
    }
}

std::vector<PassageRow> rowsFor(const Show& show, const HandOvers& all, std::size_t microphones) {
    std::vector<PassageRow> rows(std::min(show.songs.size(), songsShown));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        PassageRow& row = rows[i];
        row.id = show.songs[i].id;
        row.number = static_cast<int>(i) + 1;
        row.title = toShownText(show.songs[i].title);
        row.cells.resize(microphones);
        QStringList words;
        for (const HandOver& use : all.songs[i]) {
            if (use.equipment >= microphones) {
                break;  // the mixes stand behind
            }
            PassageCell& cell = row.cells[use.equipment];
            cell = cellFor(use);
            if (cell.isChange && !use.from.empty()) {
                drawLine(rows, i, use);
            }
            words.append(toShownText(handOverText(all, use)));
        }
        row.inWords = words.join(QStringLiteral(" ; "));
    }
    return rows;
}

}  // namespace

PassageCell PassageRow::cell(int column) const {
    return column >= 0 && column < std::ssize(cells) ? cells[static_cast<std::size_t>(column)]
                                                     : PassageCell();
}

void PassagesContent::presentShow(const Show* show, const HandOvers& all) {
    QString showName = show ? toShownText(show->name) : QString();
    QVariantList columns;
    if (show) {
        for (const Equipment& equipment : all.equipment) {
            if (equipment.kind != Equipment::Kind::microphone ||
                columns.size() == static_cast<qsizetype>(microphonesShown)) {
                break;
            }
            PassageColumn column;
            column.label = toShownText(equipment.label);
            column.isListed = equipment.isListed;
            columns.append(QVariant::fromValue(column));
        }
        rows_.setRows(rowsFor(*show, all, static_cast<std::size_t>(columns.size())));
    } else {
        rows_.setRows({});
    }
    if (showName != showName_ || columns != columns_) {
        showName_ = std::move(showName);
        columns_ = std::move(columns);
        Q_EMIT showChanged();
    }
}

void PassagesContent::presentCursor(std::int64_t songIndex) {
    const int row = static_cast<int>(std::clamp<std::int64_t>(songIndex, -1, rows_.rowCount()));
    if (row != currentRow_) {
        currentRow_ = row;
        Q_EMIT currentRowChanged();
    }
}

}  // namespace tessivo
