#include "platform/qt/DialogFilePanels.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFileIconProvider>

#include "platform/posix/SafeFileName.h"

namespace tessivo {
namespace {

QString filterFor(const std::string& extension) {
    const QString kind =
        extension == "tessivo"
            ? QStringLiteral("Shows Tessivo")
            : QStringLiteral("Fichiers %1").arg(QString::fromStdString(extension).toUpper());
    return QStringLiteral("%1 (*.%2)").arg(kind, QString::fromStdString(extension));
}

/// Completes a typed name that lacks the extension. The dialog's own default suffix takes the ".1"
/// of "Tournée 2.1" for one.
class SaveDialog : public QFileDialog {
public:
    explicit SaveDialog(const std::string& extension)
        : ending_(QStringLiteral(".") + QString::fromStdString(extension)) {}

protected:
    void accept() override {
        const QStringList files = selectedFiles();
        if (!files.isEmpty() && !QFileInfo(files.front()).isDir() &&
            !files.front().endsWith(ending_, Qt::CaseInsensitive)) {
            // The panel leaves its name field alone as long as that has the keyboard.
            if (QWidget* field = focusWidget()) {
                field->clearFocus();
            }
            selectFile(files.front() + ending_);
        }
        QFileDialog::accept();
    }

private:
    QString ending_;
};

/// Names the kinds of files, which Qt's French leaves in English.
class FrenchIcons : public QFileIconProvider {
public:
    QString type(const QFileInfo& file) const override {
        return file.isDir() ? QStringLiteral("Dossier") : QStringLiteral("Fichier");
    }
};

}  // namespace

DialogFilePanels::DialogFilePanels()
    : folder_(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

std::optional<FileLocation> DialogFilePanels::run(QFileDialog& dialog, const std::string& title,
                                                  const std::string& extension) {
    FrenchIcons icons;
    dialog.setIconProvider(&icons);
    dialog.setWindowTitle(QString::fromStdString(title));
    dialog.setNameFilter(filterFor(extension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    folder_ = dialog.directory().absolutePath();
    return dialog.selectedFiles().front().toStdString();
}

std::optional<FileLocation> DialogFilePanels::chooseSaveLocation(const SaveRequest& request) {
    SaveDialog dialog(request.extension);
    dialog.setDirectory(folder_);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.selectFile(
        QString::fromStdString(safeFileName(request.proposedName, request.extension)));
    return run(dialog, request.title, request.extension);
}

std::optional<FileLocation> DialogFilePanels::chooseFileToOpen(const OpenRequest& request) {
    QFileDialog dialog;
    dialog.setDirectory(folder_);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return run(dialog, request.title, request.extension);
}

}  // namespace tessivo
