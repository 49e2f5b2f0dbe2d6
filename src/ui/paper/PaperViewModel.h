#pragma once

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class QJSEngine;
class QQmlEngine;

namespace tessivo {

class AppState;
struct Show;
struct ScreenContext;

/// The active show on paper: printed, or written to a file that the operator chooses.
class PaperViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// HH:MM, empty for none; kept for the run.
    Q_PROPERTY(QString plannedStart READ plannedStart NOTIFY plannedStartChanged)

public:
    enum Form { Print, Pdf, Csv };
    Q_ENUM(Form)

    static PaperViewModel* create(QQmlEngine* engine, QJSEngine*);

    explicit PaperViewModel(ScreenContext& context) : context_(context) {}

    QString plannedStart() const;
    /// Takes the hour that was typed, and none for blanks; false, and nothing changes, for a text
    /// that is no hour.
    Q_INVOKABLE bool setPlannedStart(const QString& typed);
    /// Asks for a printer or a file on the next turn, once what asked for it has closed.
    Q_INVOKABLE void make(Form form);

Q_SIGNALS:
    void plannedStartChanged();
    /// It couldn't be printed or written; `reason` is a sentence.
    void refused(const QString& reason);

private:
    void print(const Show& show);
    void writePdf(const Show& show);
    void writeCsv(const Show& show);
    /// Where the operator wants a file about the show; nothing when that was cancelled.
    std::optional<std::string> chooseFile(const Show& show, std::string_view title,
                                          std::string_view extension);
    void write(const std::string& location, std::string_view bytes);

    ScreenContext& context_;
    std::optional<std::int64_t> plannedStart_;  // seconds after midnight
};

}  // namespace tessivo
