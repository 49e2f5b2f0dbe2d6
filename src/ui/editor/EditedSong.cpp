#include "ui/editor/EditedSong.h"

#include "kit/ShownText.h"
#include "live/Setlist.h"

#include <string>

namespace tessivo {

EditedGuest::EditedGuest(const Guest& guest)
    : id(guest.id),
      name(toQString(guest.name)),
      mic(toQString(guest.mic)),
      iem(toQString(guest.iem)),
      volume(toQString(shownVolume(guest))) {}

QString EditedGuest::idText() const {
    return toQString(id.toText());
}

EditedSong::EditedSong(const Song& song, const EquipmentFaults& faults)
    : id(song.id),
      title(toQString(song.title)),
      timecode(toQString(song.ltcTimecode.value_or(std::string()))),
      length(song.duration ? toQString(minutesAndSeconds(*song.duration)) : QString()),
      guests(song.guests.begin(), song.guests.end()),
      isCollision(faults.isCollision) {
    QStringList lines;
    for (const std::string& line : faults.lines) {
        lines.append(toShownText(line));
    }
    faultText = lines.join(QLatin1Char('\n'));
}

QString EditedSong::idText() const {
    return toQString(id.toText());
}

EditedGuest EditedSong::guest(int position) const {
    return position >= 0 && position < guestCount() ? guests[static_cast<std::size_t>(position)]
                                                    : EditedGuest();
}

}  // namespace tessivo
