#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

class QPagedPaintDevice;

namespace tessivo {

/// A piece of a chapter that stands by itself: a heading, a paragraph or list, or a picture.
struct GuideBlock {
    Q_GADGET
    QML_VALUE_TYPE(guideBlock)
    /// 0 for what is no heading.
    Q_PROPERTY(int headingLevel MEMBER headingLevel)
    /// Markdown, or plain for a heading; empty for a picture.
    Q_PROPERTY(QString text MEMBER text)
    /// Without marks, as an assistive tool reads it; what a picture shows.
    Q_PROPERTY(QString spoken MEMBER spoken)
    Q_PROPERTY(QUrl picture MEMBER picture)

public:
    int headingLevel = 0;
    QString text;
    QString spoken;
    QUrl picture;

    bool operator==(const GuideBlock&) const = default;
};

/// The guide, which the program brings along: its chapters in their order, as docs/guide has them.
class GuideViewModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QStringList titles READ titles CONSTANT)

public:
    GuideViewModel();

    const QStringList& titles() const { return titles_; }
    /// Of `GuideBlock`; none for a chapter that isn't there.
    Q_INVOKABLE QVariantList blocks(int chapter) const;
    /// The chapter that a link of another one means, or -1.
    Q_INVOKABLE int chapterOf(const QString& link) const;
    /// Asks for a printer on the next turn, once what asked for it has been let go.
    Q_INVOKABLE void print(int chapter);

    void paint(QPagedPaintDevice& paper, int chapter) const;

Q_SIGNALS:
    void printFailed();

private:
    QString text(int chapter) const;

    QStringList files_;
    QStringList titles_;
};

}  // namespace tessivo
