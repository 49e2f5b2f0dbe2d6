#pragma once

#include <QMetaType>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include "base/Uuid.h"
#include "model/Show.h"

#include <vector>

namespace tessivo {

/// One guest as screens show it.
class GuestInfo {
    Q_GADGET
    QML_VALUE_TYPE(guestInfo)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString mic MEMBER mic)
    Q_PROPERTY(QString iem MEMBER iem)
    Q_PROPERTY(QString volume MEMBER volume)
    Q_PROPERTY(QString equipmentLine MEMBER equipmentLine)
    Q_PROPERTY(QString stageLine MEMBER stageLine)
    Q_PROPERTY(QString operatorLine MEMBER operatorLine)

public:
    GuestInfo() = default;
    explicit GuestInfo(const Guest& guest);

    QString name;
    QString mic;
    QString iem;
    QString volume;  ///< empty when there is none
    QString equipmentLine;
    QString stageLine;     ///< name and equipment, with "—" for the nameless
    QString operatorLine;  ///< name and equipment, with "(sans nom)" for the nameless

    friend bool operator==(const GuestInfo&, const GuestInfo&) = default;
};

/// One song as screens show it.
class SongInfo {
    Q_GADGET
    QML_VALUE_TYPE(songInfo)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString timecode MEMBER timecode)
    Q_PROPERTY(int position MEMBER position)
    Q_PROPERTY(QVariantList guests READ guestList)

public:
    SongInfo() = default;
    /// `position` is the song's 1-based place in the setlist.
    SongInfo(const Song& song, int position);

    const Uuid& key() const { return id; }
    QVariantList guestList() const;

    Uuid id{};
    QString title;
    QString timecode;  ///< empty when the song has none
    int position = 0;
    std::vector<GuestInfo> guests;

    friend bool operator==(const SongInfo&, const SongInfo&) = default;
};

}  // namespace tessivo
