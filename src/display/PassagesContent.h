#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "kit/KeyedListModel.h"
#include "live/HandOvers.h"

#include <cstdint>
#include <vector>

namespace tessivo {

/// One microphone of the grid.
class PassageColumn {
    Q_GADGET
    QML_VALUE_TYPE(passageColumn)
    Q_PROPERTY(QString label MEMBER label)
    Q_PROPERTY(bool isListed MEMBER isListed)

public:
    QString label;
    bool isListed = true;

    friend bool operator==(const PassageColumn&, const PassageColumn&) = default;
};

/// One microphone in one song. A line joins the song where it was used last to the one where it
/// has changed hands, and passes through the cells between.
class PassageCell {
    Q_GADGET
    QML_VALUE_TYPE(passageCell)
    Q_PROPERTY(QString names MEMBER names)
    Q_PROPERTY(QString word MEMBER word)
    Q_PROPERTY(bool isChange MEMBER isChange)
    Q_PROPERTY(bool isCollision MEMBER isCollision)
    Q_PROPERTY(int lineAbove MEMBER lineAbove)
    Q_PROPERTY(int lineBelow MEMBER lineBelow)

public:
    QString names;  ///< who has it; empty when nobody has
    QString word;   ///< what the crew has to do, in a word or two; empty for nothing
    bool isChange = false;
    bool isCollision = false;
    int lineAbove = 0;  ///< how thick the line is, in logical pixels; 0 for none
    int lineBelow = 0;

    friend bool operator==(const PassageCell&, const PassageCell&) = default;
};

/// One song of the grid.
class PassageRow {
    Q_GADGET
    QML_VALUE_TYPE(passageRow)
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString inWords MEMBER inWords)

public:
    const Uuid& key() const { return id; }
    /// A blank cell outside the grid: views may still ask for one that has just gone.
    Q_INVOKABLE tessivo::PassageCell cell(int column) const;

    Uuid id{};
    int number = 0;
    QString title;
    QString inWords;  ///< what becomes of each microphone, for whom the grid can't be seen
    std::vector<PassageCell> cells;

    friend bool operator==(const PassageRow&, const PassageRow&) = default;
};

/// The songs of the grid; the role is `passages`.
class PassageRowModel : public KeyedListModel<PassageRow> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit PassageRowModel(QObject* parent = nullptr) : KeyedListModel("passages", parent) {}
};

/// Who has which microphone when, as its screen reads it: songs down, microphones across. The owner
/// presents a show when it has changed, and the cursor when that has moved; only what differs is
/// announced. Serves the operator's computer and a display station alike.
class PassagesContent : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(PassagesContent)
    QML_UNCREATABLE("Filled by the state that it presents")
    /// Empty without a show.
    Q_PROPERTY(QString showName READ showName NOTIFY showChanged)
    Q_PROPERTY(QVariantList columns READ columns NOTIFY showChanged)
    Q_PROPERTY(tessivo::PassageRowModel* rows READ rows CONSTANT)
    /// The live cursor: a row, or the number of songs once the show is finished.
    Q_PROPERTY(int currentRow READ currentRow NOTIFY currentRowChanged)

public:
    explicit PassagesContent(QObject* parent = nullptr) : QObject(parent) {}

    /// `show`, which may be null, and where its equipment goes.
    void presentShow(const Show* show, const HandOvers& all);
    void presentCursor(std::int64_t songIndex);

    const QString& showName() const { return showName_; }
    const QVariantList& columns() const { return columns_; }
    PassageRowModel* rows() { return &rows_; }
    int currentRow() const { return currentRow_; }

Q_SIGNALS:
    void showChanged();
    void currentRowChanged();

private:
    QString showName_;
    QVariantList columns_;
    PassageRowModel rows_;
    int currentRow_ = -1;
};

}  // namespace tessivo
