#include "ui/editor/ShowEditorViewModel.h"

#include "base/Text.h"
#include "kit/ShownText.h"
#include "live/HandOvers.h"
#include "live/SongText.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

std::string trimmed(const QString& typed) {
    return std::string(trimSpacesAndLineBreaks(typed.toStdString()));
}

}  // namespace

void ShowEditorViewModel::update(AppState::Field field) {
    if (field == AppState::Field::shows) {
        present();
    }
}

void ShowEditorViewModel::present() {
    const Show& shown = show();
    const HandOvers& all = handOvers();
    std::vector<EditedSong> songs;
    songs.reserve(shown.songs.size());
    for (std::size_t i = 0; i < shown.songs.size(); ++i) {
        songs.emplace_back(shown.songs[i], equipmentFaults(all, i));
    }
    songs_.setRows(std::move(songs));
    mics_.present(shown.mics);
    iems_.present(shown.iems);
    QString name = isGone() ? QString() : toQString(shown.name);
    if (name != name_) {
        name_ = std::move(name);
        Q_EMIT nameChanged();
    }
}

void ShowEditorViewModel::rename(const QString& name) {
    state().renameActiveShow(name.toStdString());
}

bool ShowEditorViewModel::addSong(const QString& typed) {
    std::string title = trimmed(typed);
    const bool given = !title.empty();
    state().addSong(std::move(title));
    return given;
}

void ShowEditorViewModel::removeSong(const QString& songId) {
    state().removeSong(toUuid(songId));
}

void ShowEditorViewModel::moveSongTo(const QString& songId, int position) {
    const auto& songs = songs_.rows();
    const auto song =
        std::find_if(songs.begin(), songs.end(),
                     [id = toUuid(songId)](const EditedSong& row) { return row.id == id; });
    const auto from = song - songs.begin();
    if (song == songs.end() || from == position || position < 0 ||
        static_cast<std::size_t>(position) >= songs.size()) {
        return;
    }
    state().moveSong({from}, from > position ? position : position + 1);
}

void ShowEditorViewModel::setTitle(const QString& songId, const QString& title) {
    state().updateSongTitle(toUuid(songId), title.toStdString());
}

void ShowEditorViewModel::setTimecode(const QString& songId, const QString& typed) {
    state().updateSongLtcTimecode(toUuid(songId), normalizeLtcInput(typed.toStdString()));
}

void ShowEditorViewModel::setLength(const QString& songId, const QString& typed) {
    state().updateSongDuration(toUuid(songId), parseDurationInput(typed.toStdString()));
}

bool ShowEditorViewModel::addMic(const QString& typed) {
    std::string label = trimmed(typed);
    const bool given = !label.empty();
    state().addMic(std::move(label));
    return given;
}

void ShowEditorViewModel::updateMic(int position, const QString& label) {
    state().updateMic(position, label.toStdString());
}

bool ShowEditorViewModel::addIem(const QString& typed) {
    std::string label = trimmed(typed);
    const bool given = !label.empty();
    state().addIem(std::move(label));
    return given;
}

void ShowEditorViewModel::updateIem(int position, const QString& label) {
    state().updateIem(position, label.toStdString());
}

}  // namespace tessivo
