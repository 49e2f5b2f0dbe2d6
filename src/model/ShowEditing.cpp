#include "model/ShowEditing.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <iterator>
#include <utility>

namespace tessivo::editing {
namespace {

bool isPosition(const std::vector<std::string>& labels, std::int64_t position) {
    return position >= 0 && position < std::ssize(labels);
}

std::string firstOf(const std::vector<std::string>& labels) {
    return labels.empty() ? std::string() : labels.front();
}

}  // namespace

std::int64_t removeSong(Show& show, Uuid id, std::int64_t cursor) {
    const Song* const song = firstWithId(show.songs, id);
    if (!song) {
        return cursor;
    }
    const std::int64_t position = song - show.songs.data();
    show.songs.erase(show.songs.begin() + position);
    const std::int64_t last = std::max<std::int64_t>(std::ssize(show.songs) - 1, 0);
    return std::min(cursor - (position < cursor ? 1 : 0), last);
}

std::int64_t moveSongs(Show& show, const std::set<std::int64_t>& from, std::int64_t to,
                       std::int64_t cursor) {
    const std::int64_t count = std::ssize(show.songs);
    if (to < 0 || to > count) {
        return cursor;
    }
    const Song* const current = songAt(&show, cursor);
    const Uuid currentId = current ? current->id : Uuid();
    std::vector<Song> before, moved, after;
    for (std::int64_t i = 0; i < count; ++i) {
        std::vector<Song>& part = from.contains(i) ? moved : i < to ? before : after;
        part.push_back(std::move(show.songs[static_cast<std::size_t>(i)]));
    }
    std::ranges::move(moved, std::back_inserter(before));
    std::ranges::move(after, std::back_inserter(before));
    show.songs = std::move(before);
    assert(std::ssize(show.songs) == count);
    return current ? firstWithId(show.songs, currentId) - show.songs.data() : cursor;
}

std::int64_t cursorOn(const Show& show, const std::optional<Uuid>& songId, std::int64_t cursor) {
    if (const Song* there = songAt(&show, cursor); there && there->id == songId) {
        return cursor;
    }
    const Song* const song = songId ? firstWithId(show.songs, *songId) : nullptr;
    return song ? song - show.songs.data() : std::min(cursor, std::ssize(show.songs));
}

void addGuest(Show& show, Uuid songId) {
    if (Song* song = firstWithId(show.songs, songId)) {
        Guest& guest = song->guests.emplace_back();
        guest.mic = firstOf(show.mics);
        guest.iem = firstOf(show.iems);
    }
}

void removeGuest(Show& show, Uuid songId, Uuid guestId) {
    if (Song* song = firstWithId(show.songs, songId)) {
        std::erase_if(song->guests, [&](const Guest& guest) { return guest.id == guestId; });
    }
}

void removeLabel(std::vector<std::string>& labels, std::int64_t position) {
    if (isPosition(labels, position)) {
        labels.erase(labels.begin() + position);
    }
}

void updateLabel(std::vector<std::string>& labels, std::int64_t position, std::string label) {
    if (isPosition(labels, position)) {
        labels[static_cast<std::size_t>(position)] = std::move(label);
    }
}

}  // namespace tessivo::editing
