#include "ui/guide/GuideViewModel.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPalette>
#include <QPrintDialog>
#include <QPrinter>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTimer>

#include "style/Colors.h"

#include <vector>

namespace tessivo {
namespace {

// Beside the pictures, as in docs/, so that the links of the chapters hold.
const QString folder = QStringLiteral(":/docs/guide/");
const QUrl folderUrl(QStringLiteral("qrc:/docs/guide/"));

QString withoutMarks(const QString& markdown) {
    QTextDocument document;
    document.setMarkdown(markdown);
    return document.toPlainText();
}

GuideBlock blockOf(const QString& markdown) {
    static const QRegularExpression heading(QStringLiteral("^(#+) (.*)$"));
    static const QRegularExpression picture(QStringLiteral("^!\\[(.*)\\]\\((.*)\\)$"));
    if (const auto match = heading.match(markdown); match.hasMatch()) {
        return {int(match.capturedLength(1)), match.captured(2), match.captured(2), {}};
    }
    if (const auto match = picture.match(markdown); match.hasMatch()) {
        return {0, {}, match.captured(1), folderUrl.resolved(QUrl(match.captured(2)))};
    }
    // Keys and paths: Qt would set code in the system's fixed font at that font's own, smaller
    // size.
    return {0,
            QString(markdown).replace(QLatin1Char('`'), QLatin1Char('*')),
            withoutMarks(markdown),
            {}};
}

/// Pictures as wide as the page, and links, which lead nowhere there, as dark as the rest.
void fitToPaper(QTextDocument& document, double width) {
    struct Part {
        QTextCursor cursor;
        QTextCharFormat format;
    };
    std::vector<Part> parts;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            QTextCursor cursor(&document);
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            parts.push_back({cursor, fragment.charFormat()});
        }
    }
    for (Part& part : parts) {
        if (QTextImageFormat image = part.format.toImageFormat(); image.isValid()) {
            image.setWidth(width);
            part.cursor.setCharFormat(image);
        } else if (part.format.isAnchor()) {
            part.format.setForeground(Qt::black);
            part.cursor.setCharFormat(part.format);
        }
    }
}

}  // namespace

GuideViewModel::GuideViewModel()
    : files_(QDir(folder).entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name)) {
    // In Markdown, Qt gives links the application's colour, whatever a text says of its own.
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Link, Colors().pvAmber);
    QGuiApplication::setPalette(palette);
    for (int chapter = 0; chapter < files_.size(); ++chapter) {
        titles_ += text(chapter).section(QLatin1Char('\n'), 0, 0).mid(2);
    }
}

QString GuideViewModel::text(int chapter) const {
    QFile file(folder + files_.value(chapter));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

QVariantList GuideViewModel::blocks(int chapter) const {
    static const QRegularExpression blankLines(QStringLiteral("\n\\s*\n"));
    QVariantList found;
    for (const QString& markdown : text(chapter).split(blankLines, Qt::SkipEmptyParts)) {
        found += QVariant::fromValue(blockOf(markdown));
    }
    return found;
}

int GuideViewModel::chapterOf(const QString& link) const {
    return int(files_.indexOf(link.section(QLatin1Char('#'), 0, 0)));
}

void GuideViewModel::print(int chapter) {
    QTimer::singleShot(0, this, [this, chapter] {
        QPrinter printer(QPrinter::HighResolution);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printer.setDocName(titles_.value(chapter));
        QPrintDialog dialog(&printer);
        dialog.setWindowTitle(QStringLiteral("Imprimer"));
        dialog.setOptions(QAbstractPrintDialog::PrintToFile |
                          QAbstractPrintDialog::PrintShowPageSize);
        if (dialog.exec() != QDialog::Accepted) {
            return;
        }
        paint(printer, chapter);
        if (printer.printerState() == QPrinter::Error) {
            Q_EMIT printFailed();
        }
    });
}

void GuideViewModel::paint(QPagedPaintDevice& paper, int chapter) const {
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("Inter"), 11));
    document.setBaseUrl(folderUrl);
    document.setMarkdown(text(chapter));
    fitToPaper(document, 560);
    document.print(&paper);
}

}  // namespace tessivo
