#pragma once

#include <QObject>
#include <QQmlParserStatus>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include "import/RunSheetImport.h"
#include "import/RunSheetPreview.h"
#include "platform/Turns.h"
#include "ui/import/RunSheetColumnListModel.h"
#include "ui/import/RunSheetNoteListModel.h"
#include "ui/import/RunSheetTableModel.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace tessivo {

struct ScreenContext;

/// The import of one run sheet as its screen reads it: made with the screen, gone with it. What can
/// take long, reading the file and going through its rows, happens in the background, one thing at
/// a time; a change of the settings calls off what it makes obsolete.
class ShowImportViewModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(bool hasWorkbook READ hasWorkbook NOTIFY workbookChanged)
    Q_PROPERTY(QStringList sheetNames READ sheetNames NOTIFY workbookChanged)
    Q_PROPERTY(
        int selectedSheetIndex READ selectedSheetIndex WRITE selectSheet NOTIFY settingsChanged)
    Q_PROPERTY(bool isSheetEmpty READ isSheetEmpty NOTIFY settingsChanged)
    /// The next sheet that has cells where the chosen one has none, or -1.
    Q_PROPERTY(int sheetWithCells READ sheetWithCells NOTIFY settingsChanged)
    Q_PROPERTY(int headerRow READ headerRow WRITE setHeaderRow NOTIFY settingsChanged)
    Q_PROPERTY(int startRow READ startRow WRITE setStartRow NOTIFY settingsChanged)
    Q_PROPERTY(tessivo::RunSheetColumnListModel* columns READ columns CONSTANT)
    /// The sheet itself.
    Q_PROPERTY(tessivo::RunSheetTableModel* table READ table CONSTANT)
    /// How many columns the sheet claims beyond those in `columns`.
    Q_PROPERTY(int unlistedColumns READ unlistedColumns NOTIFY settingsChanged)
    /// The labels of the roles, in the order of their numbers.
    Q_PROPERTY(QStringList roleLabels READ roleLabels CONSTANT)
    Q_PROPERTY(QString showName READ showName WRITE setShowName NOTIFY showNameChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    /// What to do about the error; may be empty.
    Q_PROPERTY(QString advice READ advice NOTIFY errorMessageChanged)
    /// The error is that of a file chosen before the one that is shown.
    Q_PROPERTY(bool isErrorPast READ isErrorPast NOTIFY errorMessageChanged)
    /// What of the workbook couldn't be read.
    Q_PROPERTY(QString losses READ losses NOTIFY settingsChanged)

    /// A file is being read.
    Q_PROPERTY(bool isReading READ isReading NOTIFY workChanged)
    /// A file is being read, or the settings' outcome isn't known yet.
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY workChanged)

    // What importing would give with these settings.
    Q_PROPERTY(int songCount READ songCount NOTIFY previewChanged)
    Q_PROPERTY(int mostGuests READ mostGuests NOTIFY previewChanged)
    Q_PROPERTY(int durationCount READ durationCount NOTIFY previewChanged)
    Q_PROPERTY(int timecodeCount READ timecodeCount NOTIFY previewChanged)
    Q_PROPERTY(int unreadCount READ unreadCount NOTIFY previewChanged)
    /// Those that aren't read, and those that are only because the operator has them read.
    Q_PROPERTY(int unusualCount READ unusualCount NOTIFY previewChanged)
    Q_PROPERTY(int doubtCount READ doubtCount NOTIFY previewChanged)
    /// The notations that aren't read, or only because the operator has them read.
    Q_PROPERTY(tessivo::RunSheetNoteListModel* notations READ notations CONSTANT)
    /// The first cells that aren't read, or only because the operator has them read.
    Q_PROPERTY(tessivo::RunSheetNoteListModel* unreadCells READ unreadCells CONSTANT)
    /// The first cells that are to be checked.
    Q_PROPERTY(tessivo::RunSheetNoteListModel* doubtfulCells READ doubtfulCells CONSTANT)

public:
    explicit ShowImportViewModel(QObject* parent = nullptr) : QObject(parent) {}
    ~ShowImportViewModel() override;

    void classBegin() override {}
    void componentComplete() override;

    bool hasWorkbook() const { return import_.workbook() != nullptr; }
    QStringList sheetNames() const;
    int selectedSheetIndex() const { return shown(import_.selectedSheetIndex()); }
    bool isSheetEmpty() const { return import_.sheet() && import_.sheet()->cells.empty(); }
    int sheetWithCells() const { return shown(import_.sheetWithCells().value_or(-1)); }
    int headerRow() const { return shown(import_.headerRow); }
    int startRow() const { return shown(import_.startRow); }
    RunSheetColumnListModel* columns() { return &columns_; }
    RunSheetTableModel* table() { return &table_; }
    int unlistedColumns() const { return shown(import_.usedColumns() - columns_.rowCount()); }
    QStringList roleLabels() const;
    QString showName() const;
    QString errorMessage() const;
    QString advice() const;
    bool isErrorPast() const { return import_.isErrorPast(); }
    QString losses() const;
    bool isReading() const { return work_ == Work::reading; }
    bool isWorking() const { return work_ != Work::none; }
    int songCount() const { return shown(preview_.songs); }
    int mostGuests() const { return shown(preview_.mostGuests); }
    int durationCount() const { return shown(preview_.durations); }
    int timecodeCount() const { return shown(preview_.timecodes); }
    int unreadCount() const { return shown(preview_.unread); }
    int unusualCount() const { return shown(preview_.unread + preview_.taken); }
    int doubtCount() const { return shown(preview_.doubts); }
    RunSheetNoteListModel* notations() { return &notations_; }
    RunSheetNoteListModel* unreadCells() { return &unreadCells_; }
    RunSheetNoteListModel* doubtfulCells() { return &doubtfulCells_; }

    void selectSheet(int index);
    void setHeaderRow(int row);
    void setStartRow(int row);
    void setShowName(const QString& name);

    /// `row` is a position in `columns`, `role` one in `roleLabels`.
    Q_INVOKABLE void setRole(int row, int role);
    /// Has all cells read that use the notation at that position in `notations`, or not.
    Q_INVOKABLE void acceptNotation(int position, bool accepted);
    /// Has the cell at that position in `unreadCells` read, or not, whatever the others are.
    Q_INVOKABLE void takeCell(int position, bool taken);
    /// Asks for a file and reads it. The panel opens on the next turn: an assistive tool that
    /// pressed the button would wait for its end.
    Q_INVOKABLE void pickFile();
    /// How much of the work is done, from 0 to 1.
    Q_INVOKABLE double progress() const;
    /// Calls the work off: the file isn't read, or the last choices are taken back.
    Q_INVOKABLE void cancel();
    /// Imports the show, once its preview is known and unless that asks for a confirmation.
    Q_INVOKABLE void createShow();
    /// Imports the show and emits `imported`, or sets the error message.
    Q_INVOKABLE void createConfirmedShow();

Q_SIGNALS:
    void workbookChanged();
    void settingsChanged();
    void previewChanged();
    void showNameChanged();
    void errorMessageChanged();
    void workChanged();
    void confirmationNeeded();
    void imported();

private:
    enum class Work { none, reading, previewing, importing };
    struct Imported;

    void readChosenFile();
    void takeFile(RunSheetFile file);
    void takePreview(RunSheetPreview preview);
    void takeImported(Imported imported);
    /// Takes other choices, but for the name, which may have been typed meanwhile.
    void takeChoices(RunSheetImport choices);
    /// A number as QML can take it; a file may claim any.
    static int shown(std::int64_t number);
    void updateSettings();
    void updateNotes();
    /// Calculates `make(progress)` in the background, and then gives it to `take` on this thread.
    template <typename Make, typename Take>
    void begin(Work work, Make make, Take take);
    void callOff();

    ScreenContext* context_ = nullptr;  // from componentComplete on
    RunSheetImport import_;
    RunSheetImport previewed_;  ///< what `preview_` is of
    RunSheetPreview preview_;
    RunSheetColumnListModel columns_{import_};
    RunSheetTableModel table_{import_};
    RunSheetNoteListModel notations_, unreadCells_, doubtfulCells_;
    Work work_ = Work::none;
    bool wantsShow_ = false;  ///< asked for before the preview was known
    std::shared_ptr<WorkProgress> progress_;
    std::optional<Turns> turns_;
};

}  // namespace tessivo
