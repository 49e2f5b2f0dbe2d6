#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "import/RunSheetImport.h"
#include "ui/RunSheetColumns.h"

namespace tessivo {

/// The import of one run sheet as its screen reads it: made with the screen, gone with it.
class ShowImport : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool hasWorkbook READ hasWorkbook NOTIFY workbookChanged)
    Q_PROPERTY(QStringList sheetNames READ sheetNames NOTIFY workbookChanged)
    Q_PROPERTY(
        qint64 selectedSheetIndex READ selectedSheetIndex WRITE selectSheet NOTIFY settingsChanged)
    Q_PROPERTY(qint64 headerRow READ headerRow WRITE setHeaderRow NOTIFY settingsChanged)
    Q_PROPERTY(qint64 startRow READ startRow WRITE setStartRow NOTIFY settingsChanged)
    Q_PROPERTY(tessivo::RunSheetColumns* columns READ columns CONSTANT)
    /// How many columns the sheet claims beyond those in `columns`.
    Q_PROPERTY(qint64 unlistedColumns READ unlistedColumns NOTIFY settingsChanged)
    /// The labels of the roles, in the order of their numbers.
    Q_PROPERTY(QStringList roleLabels READ roleLabels CONSTANT)
    Q_PROPERTY(QString showName READ showName WRITE setShowName NOTIFY showNameChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)

    // What importing would give with these settings.
    Q_PROPERTY(qint64 songCount READ songCount NOTIFY settingsChanged)
    Q_PROPERTY(qint64 durationCount READ durationCount NOTIFY settingsChanged)
    Q_PROPERTY(qint64 timecodeCount READ timecodeCount NOTIFY settingsChanged)
    Q_PROPERTY(qint64 unreadCount READ unreadCount NOTIFY settingsChanged)
    /// The first cells that can't be read, a line of text each.
    Q_PROPERTY(QStringList unreadCells READ unreadCells NOTIFY settingsChanged)

public:
    explicit ShowImport(QObject* parent = nullptr) : QObject(parent) {}

    bool hasWorkbook() const { return import_.workbook().has_value(); }
    QStringList sheetNames() const;
    qint64 selectedSheetIndex() const { return import_.selectedSheetIndex(); }
    qint64 headerRow() const { return import_.headerRow; }
    qint64 startRow() const { return import_.startRow; }
    RunSheetColumns* columns() { return &columns_; }
    qint64 unlistedColumns() const { return import_.usedColumns() - columns_.rowCount(); }
    QStringList roleLabels() const;
    QString showName() const;
    QString errorMessage() const;
    qint64 songCount() const { return preview_.songs; }
    qint64 durationCount() const { return preview_.durations; }
    qint64 timecodeCount() const { return preview_.timecodes; }
    qint64 unreadCount() const { return preview_.unread; }
    QStringList unreadCells() const;

    void selectSheet(qint64 index);
    void setHeaderRow(qint64 row);
    void setStartRow(qint64 row);
    void setShowName(const QString& name);

    /// `row` is a position in `columns`, `role` one in `roleLabels`.
    Q_INVOKABLE void setRole(int row, int role);
    /// Asks for a file and reads it.
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
    void updateSettings();

    RunSheetImport import_;
    RunSheetColumns columns_{import_};
    RunSheetImport::Preview preview_;  // kept, for it goes through every row
};

}  // namespace tessivo
