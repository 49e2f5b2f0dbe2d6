#include "ui/paper/ShowTables.h"

#include "kit/ShownText.h"
#include "live/HandOvers.h"
#include "live/RunSheet.h"
#include "live/Setlist.h"
#include "live/ShowClock.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

namespace tessivo {
namespace {

/// With as many lines as a cell can take, these still fit on a page.
constexpr std::size_t guestsInRow = 16;
/// More would leave no room for names.
constexpr std::size_t microphonesOnPage = 12;

PaperCell plain(const QString& text) {
    return {.text = text};
}

std::vector<PaperCell> cellsOf(const Guest& guest) {
    PaperCell name =
        plain(guest.name.empty() ? QStringLiteral("(sans nom)") : toShownText(guest.name));
    name.isBold = true;
    return {name, plain(toShownText(guest.mic)), plain(toShownText(guest.iem)),
            plain(toShownText(shownVolume(guest)))};
}

void appendRows(const RunSheetRow& song, std::vector<PaperRow>& rows) {
    std::size_t next = 0;
    do {
        const bool isFirst = next == 0;
        const QString title = toShownText(song.title);
        PaperRow row;
        row.cells = {plain(QString::number(song.number)),
                     {.text = isFirst ? title : title + QStringLiteral(" (suite)"),
                      .detail = isFirst ? toShownText(song.timecode) : QString(),
                      .isBold = true}};
        if (isFirst) {
            row.cells.push_back(plain(toQString(sheetTimeText(song.start))));
            row.cells.push_back(
                plain(song.length ? toQString(minutesAndSeconds(*song.length)) : QString()));
            row.cells.push_back(plain(toQString(sheetTimeText(song.end))));
        } else {
            row.cells.resize(5);
        }
        const std::size_t end = std::min(song.guests.size(), next + guestsInRow);
        for (; next < end; ++next) {
            row.lines.push_back(cellsOf(song.guests[next]));
        }
        rows.push_back(std::move(row));
    } while (next < song.guests.size());
}

PaperTable runSheetTable(const RunSheet& sheet) {
    PaperTable table;
    table.title = QStringLiteral("Conducteur");
    std::string summary = std::to_string(sheet.rows.size()) +
                          (sheet.rows.size() == 1 ? " morceau" : " morceaux") + ", durée " +
                          hoursMinutesAndSeconds(sheet.knownLength);
    if (sheet.songsWithoutLength > 0) {
        summary += ", " + songsWithoutLengthText(sheet.songsWithoutLength);
        table.legend = QStringLiteral("≥\u00A0: au plus tôt, une durée manque avant.");
    }
    table.summary = toQString(summary);
    table.columns = {{QStringLiteral("N°"), 8},     {QStringLiteral("Titre"), 46},
                     {QStringLiteral("Début"), 16}, {QStringLiteral("Durée"), 14},
                     {QStringLiteral("Fin"), 16},   {QStringLiteral("Guest"), 36},
                     {QStringLiteral("Micro"), 19}, {QStringLiteral("IEM"), 19},
                     {QStringLiteral("Volume"), 16}};
    for (const RunSheetRow& row : sheet.rows) {
        appendRows(row, table.rows);
    }
    return table;
}

PaperCell cellOf(const HandOver& use) {
    PaperCell cell = plain(toShownText(namesText(use.to)));
    cell.isBold = use.kind != HandOver::Kind::kept;
    cell.detail = toQString(handOverWord(use.kind));
    if (use.kind >= HandOver::Kind::passage) {
        cell.frame =
            use.kind == HandOver::Kind::passage ? PaperCell::Frame::thin : PaperCell::Frame::thick;
    }
    return cell;
}

/// The plot of the microphones from `first` on, as many as fit on a page.
PaperTable micPlotTable(const Show& show, const HandOvers& all, std::span<const Equipment> mics,
                        std::size_t first) {
    PaperTable table;
    table.title = QStringLiteral("Plan micros");
    table.summary = QStringLiteral("Micros %1 à %2").arg(first + 1).arg(first + mics.size());
    table.legend = QStringLiteral(
        "Cadre fin\u00A0: passage. Cadre épais\u00A0: serré ou collision. *\u00A0: hors de la "
        "liste du show.");
    table.orientation = QPageLayout::Landscape;
    table.leastRowHeight = 7.5;
    table.hasGrid = true;
    const double numberWidth = 8;
    const double titleWidth = 46;
    const double batteriesWidth = 24;
    const double room =
        PaperTable::availableWidth(table.orientation) - numberWidth - titleWidth - batteriesWidth;
    table.columns = {{QStringLiteral("N°"), numberWidth}, {QStringLiteral("Titre"), titleWidth}};
    for (const Equipment& mic : mics) {
        table.columns.push_back(
            {toShownText(mic.label) + (mic.isListed ? QString() : QStringLiteral(" *")),
             std::min(room / static_cast<double>(mics.size()), 32.0)});
    }
    table.columns.push_back({QStringLiteral("Piles"), batteriesWidth});
    for (std::size_t i = 0; i < show.songs.size(); ++i) {
        PaperRow row;
        row.cells.resize(table.columns.size());
        row.cells[0] = plain(QString::number(i + 1));
        row.cells[1] = {.text = toShownText(show.songs[i].title), .isBold = true};
        for (const HandOver& use : all.songs[i]) {
            if (use.equipment >= first && use.equipment < first + mics.size()) {
                row.cells[2 + use.equipment - first] = cellOf(use);
            }
        }
        table.rows.push_back(std::move(row));
    }
    return table;
}

}  // namespace

std::vector<PaperTable> tablesOf(const Show& show, std::optional<std::int64_t> plannedStart) {
    std::vector<PaperTable> tables{runSheetTable(runSheet(show, plannedStart))};
    const HandOvers all = handOvers(show);
    const auto end = std::ranges::find(all.equipment, Equipment::Kind::iem, &Equipment::kind);
    const std::span mics(all.equipment.begin(), end);
    for (std::size_t first = 0; first < mics.size(); first += microphonesOnPage) {
        tables.push_back(micPlotTable(
            show, all, mics.subspan(first, std::min(microphonesOnPage, mics.size() - first)),
            first));
    }
    return tables;
}

}  // namespace tessivo
