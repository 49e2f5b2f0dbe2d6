#include "live/Countdown.h"
#include "state/AppState.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace tessivo {
namespace {

template <typename Record>
auto firstWithId(std::vector<Record>& records, const Uuid& id) {
    return std::find_if(records.begin(), records.end(),
                        [&](const Record& record) { return record.id == id; });
}

std::int64_t count(const std::vector<Song>& songs) {
    return static_cast<std::int64_t>(songs.size());
}

bool isPosition(const std::vector<std::string>& labels, std::int64_t position) {
    return position >= 0 && static_cast<std::uint64_t>(position) < labels.size();
}

void moveSongs(std::vector<Song>& songs, const std::set<std::int64_t>& from, std::int64_t to) {
    if (to < 0 || to > count(songs)) {
        return;
    }
    std::vector<Song> before, moved, after;
    for (std::int64_t i = 0; i < count(songs); ++i) {
        std::vector<Song>& part = from.contains(i) ? moved : i < to ? before : after;
        part.push_back(std::move(songs[static_cast<std::size_t>(i)]));
    }
    std::move(moved.begin(), moved.end(), std::back_inserter(before));
    std::move(after.begin(), after.end(), std::back_inserter(before));
    songs = std::move(before);
}

}  // namespace

template <typename Edit>
void AppState::editActiveShow(Edit&& edit) {
    const Show* active = activeShow();
    if (!active) {
        return;
    }
    Show& show = shows_[static_cast<std::size_t>(active - shows_.data())];
    change(Field::shows, [&] { edit(show); });
    save();
}

template <typename Edit>
void AppState::editSetlist(Edit&& edit) {
    editActiveShow(
        [&](Show& show) { change(Field::activeSongIndex, [&] { edit(show, activeSongIndex_); }); });
}

template <typename Edit>
void AppState::editSong(Uuid id, Edit&& edit) {
    editActiveShow([&](Show& show) {
        if (const auto song = firstWithId(show.songs, id); song != show.songs.end()) {
            edit(show, *song);
        }
    });
}

template <typename Edit>
void AppState::editGuest(Uuid songId, Uuid guestId, Edit&& edit) {
    editSong(songId, [&](Show&, Song& song) {
        if (const auto guest = firstWithId(song.guests, guestId); guest != song.guests.end()) {
            edit(*guest);
        }
    });
}

void AppState::createShow(std::string name) {
    Show show;
    if (!name.empty()) {
        show.name = std::move(name);
    }
    importShow(std::move(show));
}

void AppState::deleteShow(Uuid id) {
    change(Field::shows,
           [&] { std::erase_if(shows_, [&](const Show& show) { return show.id == id; }); });
    if (activeShowId_ == id) {
        assign<std::optional<Uuid>>(Field::activeShowId, activeShowId_, std::nullopt);
    }
    save();
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
    editSetlist([&](Show& show, std::int64_t& cursor) {
        const auto song = firstWithId(show.songs, id);
        if (song == show.songs.end()) {
            return;
        }
        if (song - show.songs.begin() < cursor) {
            --cursor;
        }
        show.songs.erase(song);
        if (cursor >= count(show.songs)) {
            cursor = std::max<std::int64_t>(count(show.songs) - 1, 0);
        }
    });
}

void AppState::moveSong(const std::set<std::int64_t>& fromOffsets, std::int64_t toOffset) {
    editSetlist([&](Show& show, std::int64_t& cursor) {
        const Song* current = songAt(&show, cursor);
        const std::optional<Uuid> id = current ? std::optional(current->id) : std::nullopt;
        moveSongs(show.songs, fromOffsets, toOffset);
        if (id) {
            cursor = firstWithId(show.songs, *id) - show.songs.begin();
        }
    });
}

void AppState::updateSongTitle(Uuid id, std::string title) {
    editSong(id, [&](Show&, Song& song) { song.title = std::move(title); });
}

void AppState::updateSongLtcTimecode(Uuid id, std::optional<std::string> value) {
    editSong(id, [&](Show&, Song& song) { song.ltcTimecode = std::move(value); });
}

void AppState::updateSongDuration(Uuid id, std::optional<std::int64_t> seconds) {
    editSong(id, [&](Show&, Song& song) { song.duration = seconds; });
}

void AppState::addGuest(Uuid songId) {
    editSong(songId, [](Show& show, Song& song) {
        const auto first = [](const std::vector<std::string>& labels) {
            return labels.empty() ? std::string() : labels.front();
        };
        Guest& guest = song.guests.emplace_back();
        guest.mic = first(show.mics);
        guest.iem = first(show.iems);
    });
}

void AppState::removeGuest(Uuid songId, Uuid guestId) {
    editSong(songId, [&](Show&, Song& song) {
        std::erase_if(song.guests, [&](const Guest& guest) { return guest.id == guestId; });
    });
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

void AppState::addLabel(std::vector<std::string> Show::*list, std::string label) {
    if (!label.empty()) {
        editActiveShow([&](Show& show) { (show.*list).push_back(std::move(label)); });
    }
}

void AppState::removeLabel(std::vector<std::string> Show::*list, std::int64_t position) {
    editActiveShow([&](Show& show) {
        if (isPosition(show.*list, position)) {
            (show.*list).erase((show.*list).begin() + position);
        }
    });
}

void AppState::updateLabel(std::vector<std::string> Show::*list, std::int64_t position,
                           std::string label) {
    editActiveShow([&](Show& show) {
        if (isPosition(show.*list, position)) {
            (show.*list)[static_cast<std::size_t>(position)] = std::move(label);
        }
    });
}

void AppState::addMic(std::string label) {
    addLabel(&Show::mics, std::move(label));
}
void AppState::removeMic(std::int64_t position) {
    removeLabel(&Show::mics, position);
}
void AppState::updateMic(std::int64_t position, std::string label) {
    updateLabel(&Show::mics, position, std::move(label));
}

void AppState::addIem(std::string label) {
    addLabel(&Show::iems, std::move(label));
}
void AppState::removeIem(std::int64_t position) {
    removeLabel(&Show::iems, position);
}
void AppState::updateIem(std::int64_t position, std::string label) {
    updateLabel(&Show::iems, position, std::move(label));
}

}  // namespace tessivo
