#include "ui/import/ShowImportViewModel.h"

#include <QQmlEngine>
#include <QTimer>

#include "import/ColumnLetters.h"
#include "import/ColumnRole.h"
#include "import/XLSXReader.h"
#include "kit/ScreenContext.h"
#include "kit/ShownText.h"
#include "platform/FilePanels.h"
#include "state/AppState.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace tessivo {

QStringList ShowImportViewModel::sheetNames() const {
    QStringList names;
    if (const auto& workbook = import_.workbook()) {
        for (const XLSXWorkbook::Sheet& sheet : workbook->sheets) {
            names.append(toQString(sheet.name));
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

QStringList ShowImportViewModel::unreadCells() const {
    QStringList lines;
    for (const RunSheetImport::UnreadCell& cell : preview_.firstUnread) {
        lines.append(QStringLiteral("Ligne %1, colonne %2\u00A0: %3")
                         .arg(QString::number(cell.row), toQString(columnLetter(cell.column)),
                              toQString(cell.text).simplified()));
    }
    return lines;
}

void ShowImportViewModel::selectSheet(int index) {
    if (index == import_.selectedSheetIndex()) {
        return;
    }
    import_.selectSheet(index);
    columns_.showSheet();
    updateSettings();
}

void ShowImportViewModel::setHeaderRow(int row) {
    import_.headerRow = row;
    columns_.update();
    Q_EMIT settingsChanged();
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
    updateSettings();
}

void ShowImportViewModel::pickFile() {
    QTimer::singleShot(0, this, &ShowImportViewModel::readChosenFile);
}

void ShowImportViewModel::readChosenFile() {
    const Platform& platform = screenContextOf(*qmlEngine(this)).platform;
    const auto location = platform.panels.chooseFileToOpen({"Importer un conducteur", "xlsx"});
    if (!location) {
        return;
    }
    const auto archive = platform.files.read(*location, XLSXReader::maximumFileSize);
    WorkProgress progress;
    import_.load(*location, archive ? XLSXReader::read(*archive, progress) : ReaderError::notAZip);
    columns_.showSheet();
    updateSettings();
    Q_EMIT workbookChanged();
    Q_EMIT showNameChanged();
    Q_EMIT errorMessageChanged();
}

void ShowImportViewModel::createShow() {
    std::optional<Show> show = import_.createShow();
    if (!show) {
        Q_EMIT errorMessageChanged();
        return;
    }
    screenContextOf(*qmlEngine(this)).state.importShow(std::move(*show));
    Q_EMIT imported();
}

int ShowImportViewModel::shown(std::int64_t number) {
    return static_cast<int>(std::min<std::int64_t>(number, std::numeric_limits<int>::max()));
}

void ShowImportViewModel::updateSettings() {
    preview_ = import_.preview();
    Q_EMIT settingsChanged();
}

}  // namespace tessivo
