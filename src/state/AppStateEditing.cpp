#include "model/ShowEditing.h"
#include "state/AppState.h"

#include <cassert>
#include <utility>

namespace tessivo {

void AppState::importShow(Show show) {
    const Uuid id = show.id;
    change(Field::shows, [&] { library_.append(std::move(show)); });
    activate(id);
}

void AppState::activate(Uuid id) {
    assert(showWithId(id));
    assign(Field::activeShowId, activeShowId_, id);
    assign(Field::activeSongIndex, activeSongIndex_, 0);
    save();
}

void AppState::createShow(std::string name) {
    Show show;
    if (!name.empty()) {
        show.name = std::move(name);
    }
    importShow(std::move(show));
}

void AppState::deleteShow(Uuid id) {
    change(Field::shows, [&] { library_.erase(id); });
    if (activeShowId_ == id) {
        assign(Field::activeShowId, activeShowId_, std::nullopt);
    }
    save();
}

std::size_t AppState::positionOf(const Show& show) const {
    return static_cast<std::size_t>(&show - shows().data());
}

void AppState::editActiveShow(const std::function<void(Show&)>& edit) {
    if (const Show* active = activeShow()) {
        change(Field::shows, [&] { library_.edit(positionOf(*active), edit); });
        save();
    }
}

void AppState::editSetlist(const std::function<std::int64_t(Show&, std::int64_t)>& edit) {
    editActiveShow([&](Show& show) {
        change(Field::activeSongIndex, [&] { activeSongIndex_ = edit(show, activeSongIndex_); });
    });
}

void AppState::editSong(Uuid id, const std::function<void(Song&)>& edit) {
    editActiveShow([&](Show& show) {
        if (Song* song = firstWithId(show.songs, id)) {
            edit(*song);
        }
    });
}

void AppState::editGuest(Uuid songId, Uuid guestId, const std::function<void(Guest&)>& edit) {
    editSong(songId, [&](Song& song) {
        if (Guest* guest = firstWithId(song.guests, guestId)) {
            edit(*guest);
        }
    });
}

void AppState::renameActiveShow(std::string name) {
    if (!name.empty()) {
        editActiveShow([&](Show& show) { show.name = std::move(name); });
    }
}

void AppState::addSong(std::string title) {
    if (!title.empty()) {
        editActiveShow([&](Show& show) { show.songs.emplace_back().title = std::move(title); });
    }
}

void AppState::removeSong(Uuid id) {
    editSetlist(
        [&](Show& show, std::int64_t cursor) { return editing::removeSong(show, id, cursor); });
}

void AppState::moveSong(const std::set<std::int64_t>& fromOffsets, std::int64_t toOffset) {
    editSetlist([&](Show& show, std::int64_t cursor) {
        return editing::moveSongs(show, fromOffsets, toOffset, cursor);
    });
}

void AppState::updateSongTitle(Uuid id, std::string title) {
    editSong(id, [&](Song& song) { song.title = std::move(title); });
}

void AppState::updateSongLtcTimecode(Uuid id, std::optional<std::string> value) {
    editSong(id, [&](Song& song) { song.ltcTimecode = std::move(value); });
}

void AppState::updateSongDuration(Uuid id, std::optional<std::int64_t> seconds) {
    editSong(id, [&](Song& song) { song.duration = seconds; });
}

void AppState::addGuest(Uuid songId) {
    editActiveShow([&](Show& show) { editing::addGuest(show, songId); });
}

void AppState::removeGuest(Uuid songId, Uuid guestId) {
    editActiveShow([&](Show& show) { editing::removeGuest(show, songId, guestId); });
}

void AppState::updateGuest(Uuid songId, Uuid guestId, std::optional<std::string> name,
                           std::optional<std::string> mic, std::optional<std::string> iem) {
    editGuest(songId, guestId, [&](Guest& guest) {
        guest.name = std::move(name).value_or(std::move(guest.name));
        guest.mic = std::move(mic).value_or(std::move(guest.mic));
        guest.iem = std::move(iem).value_or(std::move(guest.iem));
    });
}

void AppState::updateGuestVolume(Uuid songId, Uuid guestId, std::optional<std::string> volume) {
    editGuest(songId, guestId, [&](Guest& guest) { guest.volume = std::move(volume); });
}

void AppState::addLabel(Labels labels, std::string label) {
    if (!label.empty()) {
        editActiveShow([&](Show& show) { (show.*labels).push_back(std::move(label)); });
    }
}

void AppState::removeLabel(Labels labels, std::int64_t position) {
    editActiveShow([&](Show& show) { editing::removeLabel(show.*labels, position); });
}

void AppState::updateLabel(Labels labels, std::int64_t position, std::string label) {
    editActiveShow(
        [&](Show& show) { editing::updateLabel(show.*labels, position, std::move(label)); });
}

}  // namespace tessivo
