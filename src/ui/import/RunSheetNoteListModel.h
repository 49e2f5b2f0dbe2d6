#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "kit/KeyedListModel.h"

namespace tessivo {

/// What the operator is told about a cell, or about many that are written alike.
class RunSheetNote {
    Q_GADGET
    QML_VALUE_TYPE(runSheetNote)
    Q_PROPERTY(QString place MEMBER place)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString reading MEMBER reading)
    Q_PROPERTY(bool isTaken MEMBER isTaken)
    Q_PROPERTY(bool canTake MEMBER canTake)

public:
    int position = 0;
    QString place;         ///< where it stands
    QString text;          ///< what stands there, or what is odd about it
    QString reading;       ///< what a person would read; may be empty
    bool isTaken = false;  ///< the reading counts
    bool canTake = false;  ///< the operator can have it count, or not

    int key() const { return position; }
    friend bool operator==(const RunSheetNote&, const RunSheetNote&) = default;
};

/// Such notes in order; the role is `note`.
class RunSheetNoteListModel : public KeyedListModel<RunSheetNote> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit RunSheetNoteListModel(QObject* parent = nullptr) : KeyedListModel("note", parent) {}
};

}  // namespace tessivo
