#include "display/SongInfo.h"

#include "live/Setlist.h"

namespace tessivo {

QString toQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

GuestInfo::GuestInfo(const Guest& guest)
    : name(toQString(guest.name)),
      mic(toQString(guest.mic)),
      iem(toQString(guest.iem)),
      volume(toQString(shownVolume(guest))),
      equipmentLine(toQString(guestEquipmentLine(guest))),
      stageLine(toQString(guestLine(guest, "—"))),
      operatorLine(toQString(guestLine(guest, "(sans nom)"))) {}

SongInfo::SongInfo(const Song& song, int songPosition)
    : id(song.id),
      title(toQString(song.title)),
      timecode(toQString(song.ltcTimecode.value_or(std::string()))),
      position(songPosition),
      guests(song.guests.begin(), song.guests.end()) {}

QVariantList SongInfo::guestList() const {
    QVariantList list;
    list.reserve(static_cast<qsizetype>(guests.size()));
    for (const GuestInfo& guest : guests) {
        list.append(QVariant::fromValue(guest));
    }
    return list;
}

QString SongInfo::guestsOnOneLine() const {
    QStringList lines;
    for (const GuestInfo& guest : guests) {
        lines.append(guest.stageLine);
    }
    return lines.join(QStringLiteral("    "));
}

}  // namespace tessivo
