#include "kit/SongInfo.h"

#include "kit/ShownText.h"
#include "live/Setlist.h"

#include <algorithm>
#include <cstddef>

namespace tessivo {
namespace {

/// Of one song: a message from the network may hold hundreds of thousands.
constexpr std::ptrdiff_t guestsShown = 60;

}  // namespace

GuestInfo::GuestInfo(const Guest& guest)
    : name(toShownText(guest.name)),
      mic(toShownText(guest.mic)),
      iem(toShownText(guest.iem)),
      volume(toShownText(shownVolume(guest))),
      equipmentLine(toShownText(guestEquipmentLine(guest))),
      stageLine(toShownText(guestLine(guest, "—"))),
      operatorLine(toShownText(guestLine(guest, "(sans nom)"))) {}

SongInfo::SongInfo(const Song& song, int songPosition)
    : id(song.id),
      title(toShownText(song.title)),
      timecode(toShownText(song.ltcTimecode.value_or(std::string()))),
      position(songPosition),
      guests(song.guests.begin(),
             song.guests.begin() +
                 std::min(guestsShown, static_cast<std::ptrdiff_t>(song.guests.size()))) {}

QVariantList SongInfo::guestList() const {
    QVariantList list;
    list.reserve(static_cast<qsizetype>(guests.size()));
    for (const GuestInfo& guest : guests) {
        list.append(QVariant::fromValue(guest));
    }
    return list;
}

}  // namespace tessivo
