#include "ui/ShowEditor.h"

#include "base/Text.h"
#include "display/SongInfo.h"
#include "live/SongText.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessivo {
namespace {

std::string trimmed(const QString& typed) {
    return std::string(trimSpacesAndLineBreaks(typed.toStdString()));
}

}  // namespace

void ShowEditor::update(AppState::Field field) {
    if (field == AppState::Field::shows) {
        present();
    }
}

void ShowEditor::present() {
    const Show& shown = show();
    songs_.setRows({shown.songs.begin(), shown.songs.end()});
    mics_.present(shown.mics);
    iems_.present(shown.iems);
    QString name = isGone() ? QString() : toQString(shown.name);
    if (name != name_) {
        name_ = std::move(name);
        Q_EMIT nameChanged();
    }
}

void ShowEditor::rename(const QString& name) {
    state().renameActiveShow(name.toStdString());
}

bool ShowEditor::addSong(const QString& typed) {
    std::string title = trimmed(typed);
    const bool given = !title.empty();
    state().addSong(std::move(title));
    return given;
}

void ShowEditor::removeSong(const QString& songId) {
    state().removeSong(toUuid(songId));
}

void ShowEditor::moveSongTo(const QString& songId, int position) {
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

void ShowEditor::setTitle(const QString& songId, const QString& title) {
    state().updateSongTitle(toUuid(songId), title.toStdString());
}

void ShowEditor::setTimecode(const QString& songId, const QString& typed) {
    state().updateSongLtcTimecode(toUuid(songId), normalizeLtcInput(typed.toStdString()));
}

void ShowEditor::setLength(const QString& songId, const QString& typed) {
    state().updateSongDuration(toUuid(songId), parseDurationInput(typed.toStdString()));
}

bool ShowEditor::addMic(const QString& typed) {
    std::string label = trimmed(typed);
    const bool given = !label.empty();
    state().addMic(std::move(label));
    return given;
}

void ShowEditor::updateMic(int position, const QString& label) {
    state().updateMic(position, label.toStdString());
}

bool ShowEditor::addIem(const QString& typed) {
    std::string label = trimmed(typed);
    const bool given = !label.empty();
    state().addIem(std::move(label));
    return given;
}

void ShowEditor::updateIem(int position, const QString& label) {
    state().updateIem(position, label.toStdString());
}

}  // namespace tessivo
