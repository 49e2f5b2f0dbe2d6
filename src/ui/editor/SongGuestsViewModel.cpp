#include "ui/editor/SongGuestsViewModel.h"

#include "base/Text.h"
#include "kit/ShownText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

QStringList toList(const std::vector<std::string>& labels) {
    QStringList list;
    list.reserve(static_cast<qsizetype>(labels.size()));
    for (const std::string& label : labels) {
        list.append(toQString(label));
    }
    return list;
}

}  // namespace

void SongGuestsViewModel::setSongId(const QString& songId) {
    if (songId != songId_) {
        songId_ = songId;
        Q_EMIT songIdChanged();
        presentAnew();
    }
}

void SongGuestsViewModel::add() {
    state().addGuest(toUuid(songId_));
}

void SongGuestsViewModel::remove(const QString& guestId) {
    state().removeGuest(toUuid(songId_), toUuid(guestId));
}

void SongGuestsViewModel::setName(const QString& guestId, const QString& name) {
    state().updateGuest(toUuid(songId_), toUuid(guestId), name.toStdString(), std::nullopt,
                        std::nullopt);
}

void SongGuestsViewModel::setMic(const QString& guestId, const QString& mic) {
    state().updateGuest(toUuid(songId_), toUuid(guestId), std::nullopt, mic.toStdString(),
                        std::nullopt);
}

void SongGuestsViewModel::setIem(const QString& guestId, const QString& iem) {
    state().updateGuest(toUuid(songId_), toUuid(guestId), std::nullopt, std::nullopt,
                        iem.toStdString());
}

void SongGuestsViewModel::setVolume(const QString& guestId, const QString& typed) {
    const std::string text = typed.toStdString();
    const std::string volume(trimSpaces(text));
    state().updateGuestVolume(toUuid(songId_), toUuid(guestId),
                              volume.empty() ? std::nullopt : std::optional(volume));
}

void SongGuestsViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows) {
        present();
    }
}

void SongGuestsViewModel::present() {
    const Show& shown = show();
    const auto song =
        std::find_if(shown.songs.begin(), shown.songs.end(),
                     [id = toUuid(songId_)](const Song& candidate) { return candidate.id == id; });
    if (song == shown.songs.end()) {
        guests_.setRows({});
    } else {
        guests_.setRows({song->guests.begin(), song->guests.end()});
    }
    QStringList mics = toList(shown.mics);
    QStringList iems = toList(shown.iems);
    if (mics != mics_ || iems != iems_) {
        mics_ = std::move(mics);
        iems_ = std::move(iems);
        Q_EMIT labelsChanged();
    }
}

}  // namespace tessivo
