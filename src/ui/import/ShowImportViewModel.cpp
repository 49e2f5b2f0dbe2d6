#include "ui/import/ShowImportViewModel.h"

#include <QQmlEngine>
#include <QTimer>

#include "import/ColumnLetters.h"
#include "import/ColumnRole.h"
#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "platform/Background.h"
#include "platform/FilePanels.h"
#include "state/AppState.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

QString placeOf(std::int64_t row, std::int64_t column) {
    return QStringLiteral("Ligne %1, colonne %2")
        .arg(QString::number(row), toQString(columnLetter(column)));
}

}  // namespace

/// The show that was made of these choices, or why there is none.
struct ShowImportViewModel::Imported {
    RunSheetImport import;
    std::optional<Show> show = import.createShow();
};

ShowImportViewModel::~ShowImportViewModel() {
    callOff();
}

void ShowImportViewModel::componentComplete() {
    context_ = &screenContextOf(*qmlEngine(this));
    turns_.emplace(context_->platform.mainQueue);
}

QStringList ShowImportViewModel::sheetNames() const {
    QStringList names;
    if (const XLSXWorkbook* workbook = import_.workbook()) {
        for (const XLSXWorkbook::Sheet& sheet : workbook->sheets) {
            names.append(toShownText(sheet.name));
        }
    }
    return names;
}

QStringList ShowImportViewModel::roleLabels() const {
    QStringList labels;
    for (const ColumnRole role : columnRoles) {
        labels.append(toQString(textOf(role)));
    }
    return labels;
}

QString ShowImportViewModel::showName() const {
    return toQString(import_.showName);
}

QString ShowImportViewModel::errorMessage() const {
    return toQString(import_.errorMessage().value_or(std::string()));
}

QString ShowImportViewModel::advice() const {
    return toQString(import_.advice());
}

QString ShowImportViewModel::losses() const {
    const XLSXWorkbook::Sheet* sheet = import_.sheet();
    QStringList lines;
    if (sheet) {
        for (const std::string& loss : lossesOf(*import_.workbook(), *sheet)) {
            lines.append(toShownText(loss));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

void ShowImportViewModel::selectSheet(int index) {
    if (index == import_.selectedSheetIndex()) {
        return;
    }
    import_.selectSheet(index);
    columns_.showSheet();
    table_.showSheet();
    updateSettings();
}

void ShowImportViewModel::setHeaderRow(int row) {
    import_.headerRow = row;
    columns_.update();
    updateSettings();  // a hidden column is told in this row
}

void ShowImportViewModel::setStartRow(int row) {
    import_.startRow = row;
    updateSettings();
}

void ShowImportViewModel::setShowName(const QString& name) {
    import_.showName = name.toStdString();
    Q_EMIT showNameChanged();
}

void ShowImportViewModel::setRole(int row, int role) {
    import_.setRole(row + 1, columnRoles.at(static_cast<std::size_t>(role)));
    columns_.update();
    table_.update();
    updateSettings();
}

void ShowImportViewModel::acceptNotation(int position, bool accepted) {
    import_.accept(preview_.notations.at(static_cast<std::size_t>(position)).notation, accepted);
    updateSettings();
}

void ShowImportViewModel::takeCell(int position, bool taken) {
    const auto& cell = preview_.unreadCells.at(static_cast<std::size_t>(position));
    import_.refuse(cell.row, cell.column, !taken);
    updateSettings();
}

void ShowImportViewModel::pickFile() {
    QTimer::singleShot(0, this, &ShowImportViewModel::readChosenFile);
}

double ShowImportViewModel::progress() const {
    return progress_ ? progress_->done.load() : 0.0;
}

void ShowImportViewModel::cancel() {
    callOff();
    takeChoices(previewed_);
    columns_.update();
    table_.update();
    Q_EMIT settingsChanged();
    Q_EMIT workChanged();
}

void ShowImportViewModel::createShow() {
    wantsShow_ = work_ == Work::previewing;
    if (wantsShow_) {
        return;
    }
    if (preview_.isUnusuallyLarge()) {
        Q_EMIT confirmationNeeded();
    } else {
        createConfirmedShow();
    }
}

void ShowImportViewModel::createConfirmedShow() {
    begin(
        Work::importing, [import = import_](WorkProgress&) { return Imported{import}; },
        &ShowImportViewModel::takeImported);
}

void ShowImportViewModel::readChosenFile() {
    const Platform& platform = context_->platform;
    const auto location = platform.panels.chooseFileToOpen({"Importer un conducteur", "xlsx"});
    if (!location) {
        return;
    }
    import_.choose(*location);
    Q_EMIT showNameChanged();
    begin(
        Work::reading,
        [&files = platform.files, location = *location](WorkProgress& progress) {
            return readRunSheet(files, location, progress);
        },
        &ShowImportViewModel::takeFile);
}

void ShowImportViewModel::takeFile(RunSheetFile file) {
    import_.load(std::move(file));
    columns_.showSheet();
    table_.showSheet();
    takePreview({});  // nothing has a meaning yet
    Q_EMIT workbookChanged();
    Q_EMIT settingsChanged();
    Q_EMIT errorMessageChanged();
}

void ShowImportViewModel::takePreview(RunSheetPreview preview) {
    previewed_ = import_;
    preview_ = std::move(preview);
    updateNotes();
    table_.update();
    Q_EMIT previewChanged();
    if (std::exchange(wantsShow_, false)) {
        createShow();
    }
}

void ShowImportViewModel::takeImported(Imported imported) {
    if (imported.show) {
        context_->state.importShow(std::move(*imported.show));
        Q_EMIT this->imported();
    } else {
        takeChoices(std::move(imported.import));
        Q_EMIT errorMessageChanged();
    }
}

void ShowImportViewModel::takeChoices(RunSheetImport choices) {
    choices.showName = std::move(import_.showName);
    import_ = std::move(choices);
}

int ShowImportViewModel::shown(std::int64_t number) {
    return static_cast<int>(std::clamp<std::int64_t>(number, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

void ShowImportViewModel::updateSettings() {
    Q_EMIT settingsChanged();
    begin(
        Work::previewing,
        [import = import_](WorkProgress& progress) { return previewOf(import, progress); },
        &ShowImportViewModel::takePreview);
}

void ShowImportViewModel::updateNotes() {
    std::vector<RunSheetNote> notations, cells, doubts;
    for (const RunSheetPreview::NotationUse& use : preview_.notations) {
        const QString place =
            QStringLiteral("Colonne %1, %2 cellule%3")
                .arg(toQString(columnLetter(use.column)), QString::number(use.cells),
                     use.cells > 1 ? QStringLiteral("s") : QString());
        notations.push_back({static_cast<int>(notations.size()), place, toQString(use.text),
                             toQString(use.reading), import_.accepts(use.notation), true});
    }
    for (const RunSheetPreview::UnreadCell& cell : preview_.unreadCells) {
        const bool canTake = cell.reading && import_.accepts(cell.reading->notation);
        cells.push_back(
            {static_cast<int>(cells.size()), placeOf(cell.row, cell.column), toQString(cell.text),
             cell.reading ? toQString(cell.reading->text) : QString(), cell.isTaken, canTake});
    }
    for (const RunSheetPreview::DoubtfulCell& cell : preview_.doubtfulCells) {
        doubts.push_back({static_cast<int>(doubts.size()), placeOf(cell.row, cell.column),
                          toQString(cell.text), toQString(textOf(cell.doubt))});
    }
    notations_.setRows(std::move(notations));
    unreadCells_.setRows(std::move(cells));
    doubtfulCells_.setRows(std::move(doubts));
}

template <typename Make, typename Take>
void ShowImportViewModel::begin(Work work, Make make, Take take) {
    callOff();
    work_ = work;
    progress_ = std::make_shared<WorkProgress>();
    context_->platform.background.run(
        [this, make, take, progress = progress_, post = turns_->poster()] {
            auto result = std::make_shared<decltype(make(*progress))>(make(*progress));
            if (!progress->isCancelled) {
                post([this, take, result = std::move(result)] {
                    work_ = Work::none;
                    (this->*take)(std::move(*result));
                    Q_EMIT workChanged();
                });
            }
        });
    Q_EMIT workChanged();
}

void ShowImportViewModel::callOff() {
    if (progress_) {
        progress_->isCancelled = true;
        turns_->callOff();
    }
    work_ = Work::none;
    wantsShow_ = false;
}

}  // namespace tessivo
