#include "ui/paper/PaperViewModel.h"

#include <QBuffer>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QQmlEngine>
#include <QTimer>

#include "base/Text.h"
#include "kit/LocalTime.h"
#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "live/RunSheet.h"
#include "live/ShowClock.h"
#include "platform/Clock.h"
#include "platform/FilePanels.h"
#include "platform/FileStore.h"
#include "state/AppState.h"
#include "ui/paper/ShowTables.h"

namespace tessivo {

PaperViewModel* PaperViewModel::create(QQmlEngine* engine, QJSEngine*) {
    return new PaperViewModel(screenContextOf(*engine));
}

QString PaperViewModel::plannedStart() const {
    return plannedStart_ ? toQString(timeOfDayText(*plannedStart_)) : QString();
}

bool PaperViewModel::setPlannedStart(const QString& typed) {
    const std::string text = typed.toStdString();
    const auto start = parseTimeOfDay(text);
    if (!start && !trimSpacesAndLineBreaks(text).empty()) {
        return false;
    }
    plannedStart_ = start;
    Q_EMIT plannedStartChanged();
    return true;
}

void PaperViewModel::make(Form form) {
    QTimer::singleShot(0, this, [this, form] {
        const Show* show = context_.state.activeShow();
        if (!show) {
            return;
        }
        // A copy: while a panel is open, the shows may change.
        switch (form) {
            case Print:
                return print(Show(*show));
            case Pdf:
                return writePdf(Show(*show));
            case Csv:
                return writeCsv(Show(*show));
        }
    });
}

void PaperViewModel::print(const Show& show) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setDocName(toShownText(show.name));
    QPrintDialog dialog(&printer);
    dialog.setWindowTitle(QStringLiteral("Imprimer"));
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() == QDialog::Accepted &&
        !paint(printer, tablesOf(show, plannedStart_), toShownText(show.name),
               localTime(context_.platform.clock.now()).date())) {
        Q_EMIT refused(QStringLiteral("L'impression n'a pas abouti."));
    }
}

void PaperViewModel::writePdf(const Show& show) {
    const auto location = chooseFile(show, "Exporter en PDF", "pdf");
    if (!location) {
        return;
    }
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter writer(&bytes);
    writer.setTitle(toShownText(show.name));
    writer.setCreator(QStringLiteral("Tessivo"));
    paint(writer, tablesOf(show, plannedStart_), toShownText(show.name),
          localTime(context_.platform.clock.now()).date());
    write(*location, {bytes.data().constData(), static_cast<std::size_t>(bytes.size())});
}

void PaperViewModel::writeCsv(const Show& show) {
    if (const auto location = chooseFile(show, "Exporter en CSV", "csv")) {
        write(*location, runSheetCsv(runSheet(show, plannedStart_)));
    }
}

std::optional<std::string> PaperViewModel::chooseFile(const Show& show, std::string_view title,
                                                      std::string_view extension) {
    std::string name = show.name + ".";
    name += extension;
    return context_.platform.panels.chooseSaveLocation(
        {std::string(title), std::move(name), std::string(extension)});
}

void PaperViewModel::write(const std::string& location, std::string_view bytes) {
    if (!context_.platform.files.writeAtomically(location, bytes)) {
        Q_EMIT refused(QStringLiteral("Le fichier n'a pas pu être écrit\u00A0: %1")
                           .arg(toShownText(location)));
    }
}

}  // namespace tessivo
