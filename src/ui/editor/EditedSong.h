#pragma once

#include <QString>
#include <QtQml/qqmlregistration.h>

#include "base/Uuid.h"
#include "kit/KeyedListModel.h"
#include "live/HandOvers.h"
#include "model/Song.h"

#include <vector>

namespace tessivo {

/// One guest as the editor shows it.
class EditedGuest {
    Q_GADGET
    QML_VALUE_TYPE(editedGuest)
    Q_PROPERTY(QString id READ idText)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString mic MEMBER mic)
    Q_PROPERTY(QString iem MEMBER iem)
    Q_PROPERTY(QString volume MEMBER volume)

public:
    EditedGuest() = default;
    explicit EditedGuest(const Guest& guest);

    const Uuid& key() const { return id; }
    QString idText() const;

    Uuid id{};
    QString name;
    QString mic;
    QString iem;
    QString volume;  ///< empty when there is none

    friend bool operator==(const EditedGuest&, const EditedGuest&) = default;
};

/// One song as the editor shows it.
class EditedSong {
    Q_GADGET
    QML_VALUE_TYPE(editedSong)
    Q_PROPERTY(QString id READ idText)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString timecode MEMBER timecode)
    Q_PROPERTY(QString length MEMBER length)
    Q_PROPERTY(int guestCount READ guestCount)
    Q_PROPERTY(bool isCollision MEMBER isCollision)
    Q_PROPERTY(QString faultText MEMBER faultText)

public:
    EditedSong() = default;
    EditedSong(const Song& song, const EquipmentFaults& faults);

    const Uuid& key() const { return id; }
    QString idText() const;
    int guestCount() const { return static_cast<int>(guests.size()); }
    /// A blank guest outside the list: views may still ask for one that has just gone.
    Q_INVOKABLE tessivo::EditedGuest guest(int position) const;

    Uuid id{};
    QString title;
    QString timecode;  ///< empty when the song has none
    QString length;    ///< M:SS, empty when the song has none
    std::vector<EditedGuest> guests;
    bool isCollision = false;  ///< two guests or more have the same microphone or mix
    QString faultText;         ///< what is wrong with the equipment, a line for each

    friend bool operator==(const EditedSong&, const EditedSong&) = default;
};

/// The whole setlist; the role is `song`.
class EditedSongModel : public KeyedListModel<EditedSong> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit EditedSongModel(QObject* parent = nullptr) : KeyedListModel("song", parent) {}
};

/// The guests of one song; the role is `guest`.
class EditedGuestModel : public KeyedListModel<EditedGuest> {
    Q_OBJECT
    QML_ANONYMOUS

public:
    explicit EditedGuestModel(QObject* parent = nullptr) : KeyedListModel("guest", parent) {}
};

}  // namespace tessivo
