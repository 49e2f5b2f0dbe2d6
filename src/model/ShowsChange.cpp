#include "model/ShowsChange.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <string>
#include <utility>

namespace tessivo {
namespace {

std::size_t bytesOf(const std::vector<std::string>& texts) {
    std::size_t bytes = texts.size() * sizeof(std::string);
    for (const std::string& text : texts) {
        bytes += text.size();
    }
    return bytes;
}

std::size_t bytesOf(const Show& show) {
    std::size_t bytes = sizeof(Show) + show.name.size() + bytesOf(show.mics) + bytesOf(show.iems);
    for (const Song& song : show.songs) {
        bytes += sizeof(Song) + song.title.size() + song.guests.size() * sizeof(Guest);
        for (const Guest& guest : song.guests) {
            bytes += guest.name.size() + guest.mic.size() + guest.iem.size();
        }
    }
    return bytes;
}

}  // namespace

ShowsChange ShowsChange::ofEdit(std::size_t position, Show before, const Show& after) {
    const auto [oldFirst, newFirst] = std::ranges::mismatch(before.songs, after.songs);
    const auto same = newFirst - after.songs.begin();
    auto oldEnd = before.songs.end();
    auto newEnd = after.songs.end();
    while (oldEnd != oldFirst && newEnd != newFirst && *(oldEnd - 1) == *(newEnd - 1)) {
        --oldEnd;
        --newEnd;
    }
    Show now{after.id, after.name, after.mics, after.iems, {newFirst, newEnd}};
    before.songs = {std::move_iterator(oldFirst), std::move_iterator(oldEnd)};

    ShowsChange change{position, {}, {}, static_cast<std::size_t>(same)};
    change.before.push_back(std::move(before));
    change.after.push_back(std::move(now));
    return change;
}

std::size_t ShowsChange::bytes() const {
    std::size_t bytes = sizeof(ShowsChange);
    for (const auto* shows : {&before, &after}) {
        for (const Show& show : *shows) {
            bytes += bytesOf(show);
        }
    }
    return bytes;
}

/// The songs that stayed are the present show's.
Show ShowsChange::exchanged(const Show& present, const Show& there, const Show& wanted) const {
    const auto first = present.songs.begin() + static_cast<std::ptrdiff_t>(sameSongs);
    const auto last = first + std::ssize(there.songs);
    Show show = wanted;
    show.songs.insert(show.songs.begin(), present.songs.begin(), first);
    show.songs.insert(show.songs.end(), last, present.songs.end());
    return show;
}

void ShowsChange::replace(std::vector<Show>& shows, const std::vector<Show>& there,
                          const std::vector<Show>& wanted) const {
    assert(position + there.size() <= shows.size());
    const auto place = shows.begin() + static_cast<std::ptrdiff_t>(position);
    if (there.size() == 1 && wanted.size() == 1) {
        *place = exchanged(*place, there.front(), wanted.front());
    } else {
        shows.insert(shows.erase(place, place + std::ssize(there)), wanted.begin(), wanted.end());
    }
}

}  // namespace tessivo
