#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "import/RunSheetImport.h"
#include "ui/import/RunSheetColumnListModel.h"

#include <cstdint>

namespace tessivo {

/// The import of one run sheet as its screen reads it: made with the screen, gone with it.
class ShowImportViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool hasWorkbook READ hasWorkbook NOTIFY workbookChanged)
    Q_PROPERTY(QStringList sheetNames READ sheetNames NOTIFY workbookChanged)
    Q_PROPERTY(
        int selectedSheetIndex READ selectedSheetIndex WRITE selectSheet NOTIFY settingsChanged)
    Q_PROPERTY(int headerRow READ headerRow WRITE setHeaderRow NOTIFY settingsChanged)
    Q_PROPERTY(int startRow READ startRow WRITE setStartRow NOTIFY settingsChanged)
    Q_PROPERTY(tessivo::RunSheetColumnListModel* columns READ columns CONSTANT)
    /// How many columns the sheet claims beyond those in `columns`.
    Q_PROPERTY(int unlistedColumns READ unlistedColumns NOTIFY settingsChanged)
    /// The labels of the roles, in the order of their numbers.
    Q_PROPERTY(QStringList roleLabels READ roleLabels CONSTANT)
    Q_PROPERTY(QString showName READ showName WRITE setShowName NOTIFY showNameChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

    // What importing would give with these settings.
    Q_PROPERTY(int songCount READ songCount NOTIFY settingsChanged)
    Q_PROPERTY(int durationCount READ durationCount NOTIFY settingsChanged)
    Q_PROPERTY(int timecodeCount READ timecodeCount NOTIFY settingsChanged)
    Q_PROPERTY(int unreadCount READ unreadCount NOTIFY settingsChanged)
    /// The first cells that can't be read, a line of text each.
    Q_PROPERTY(QStringList unreadCells READ unreadCells NOTIFY settingsChanged)

public:
    explicit ShowImportViewModel(QObject* parent = nullptr) : QObject(parent) {}

    bool hasWorkbook() const { return import_.workbook().has_value(); }
    QStringList sheetNames() const;
    int selectedSheetIndex() const { return shown(import_.selectedSheetIndex()); }
    int headerRow() const { return shown(import_.headerRow); }
    int startRow() const { return shown(import_.startRow); }
    RunSheetColumnListModel* columns() { return &columns_; }
    int unlistedColumns() const { return shown(import_.usedColumns() - columns_.rowCount()); }
    QStringList roleLabels() const;
    QString showName() const;
    QString errorMessage() const;
    int songCount() const { return shown(preview_.songs); }
    int durationCount() const { return shown(preview_.durations); }
    int timecodeCount() const { return shown(preview_.timecodes); }
    int unreadCount() const { return shown(preview_.unread); }
    QStringList unreadCells() const;

    void selectSheet(int index);
    void setHeaderRow(int row);
    void setStartRow(int row);
    void setShowName(const QString& name);

    /// `row` is a position in `columns`, `role` one in `roleLabels`.
    Q_INVOKABLE void setRole(int row, int role);
    /// Asks for a file and reads it. The panel opens on the next turn: an assistive tool that
    /// pressed the button would wait for its end.
    Q_INVOKABLE void pickFile();
    /// Imports the show and emits `imported`, or sets the error message.
    Q_INVOKABLE void createShow();

Q_SIGNALS:
    void workbookChanged();
    void settingsChanged();
    void showNameChanged();
    void errorMessageChanged();
    void imported();

private:
    void readChosenFile();
    /// A number as QML can take it; a file may claim any.
    static int shown(std::int64_t number);
    void updateSettings();

    RunSheetImport import_;
    RunSheetColumnListModel columns_{import_};
    RunSheetImport::Preview preview_;  // kept, for it goes through every row
};

}  // namespace tessivo
