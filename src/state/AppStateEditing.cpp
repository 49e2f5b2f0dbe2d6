#include "model/ShowEditing.h"
#include "state/AppState.h"
#include "state/EditNames.h"

#include <cassert>
#include <utility>

namespace tessivo {
namespace {

const Song* songIn(const Show* show, const Uuid& id) {
    return show ? firstWithId(show->songs, id) : nullptr;
}

std::string titleOf(const Show* show, const Uuid& songId) {
    const Song* song = songIn(show, songId);
    return song ? song->title : std::string();
}

std::string nameOf(const Show* show, const Uuid& songId, const Uuid& guestId) {
    const Song* song = songIn(show, songId);
    const Guest* guest = song ? firstWithId(song->guests, guestId) : nullptr;
    return guest ? guest->name : std::string();
}

std::string labelAt(const std::vector<std::string>& labels, std::int64_t position) {
    const bool isPosition = position >= 0 && position < std::ssize(labels);
    return isPosition ? labels[static_cast<std::size_t>(position)] : std::string();
}

}  // namespace

void AppState::importShow(Show show) {
    append(std::move(show), "importer le show");
}

void AppState::append(Show show, std::string_view words) {
    if (isLocked_) {
        return;
    }
    const Uuid id = show.id;
    Edit edit = named(withName(words, show.name, "ajouter un show"));
    change(Field::shows, [&] { library_.append(std::move(show), std::move(edit)); });
    activate(id);
}

void AppState::activate(Uuid id, std::int64_t songIndex) {
    assert(showWithId(id));
    assign(Field::activeShowId, activeShowId_, id);
    assign(Field::activeSongIndex, activeSongIndex_, songIndex);
    save();
}

void AppState::createShow(std::string name) {
    Show show;
    if (!name.empty()) {
        show.name = std::move(name);
    }
    append(std::move(show), "créer le show");
}

void AppState::deleteShow(Uuid id) {
    if (isLocked_) {
        return;
    }
    const Show* show = showWithId(id);
    const std::string name = show ? show->name : std::string();
    Edit edit = removal(withName("supprimer le show", name, "supprimer un show"),
                        withName("Show supprimé\u00A0:", name, "Show supprimé"));
    change(Field::shows, [&] { library_.erase(id, std::move(edit)); });
    if (activeShowId_ == id) {
        assign(Field::activeShowId, activeShowId_, std::nullopt);
    }
    save();
}

std::size_t AppState::positionOf(const Show& show) const {
    return static_cast<std::size_t>(&show - shows().data());
}

void AppState::editActiveShow(Edit edit, const std::function<void(Show&)>& apply) {
    const Show* active = activeShow();
    if (active && !isLocked_) {
        change(Field::shows, [&] { library_.edit(positionOf(*active), std::move(edit), apply); });
        save();
    }
}

void AppState::editSetlist(Edit edit,
                           const std::function<std::int64_t(Show&, std::int64_t)>& apply) {
    editActiveShow(std::move(edit), [&](Show& show) {
        change(Field::activeSongIndex, [&] { activeSongIndex_ = apply(show, activeSongIndex_); });
    });
}

void AppState::editSong(Uuid id, Edit edit, const std::function<void(Song&)>& apply) {
    editActiveShow(std::move(edit), [&](Show& show) {
        if (Song* song = firstWithId(show.songs, id)) {
            apply(*song);
        }
    });
}

void AppState::editGuest(Uuid songId, Uuid guestId, Edit edit,
                         const std::function<void(Guest&)>& apply) {
    editSong(songId, std::move(edit), [&](Song& song) {
        if (Guest* guest = firstWithId(song.guests, guestId)) {
            apply(*guest);
        }
    });
}

void AppState::renameActiveShow(std::string name) {
    if (!name.empty()) {
        editActiveShow(named("renommer le show"), [&](Show& show) { show.name = std::move(name); });
    }
}

void AppState::addSong(std::string title) {
    if (!title.empty()) {
        editActiveShow(named(withName("ajouter", title, "ajouter un morceau")),
                       [&](Show& show) { show.songs.emplace_back().title = std::move(title); });
    }
}

void AppState::removeSong(Uuid id) {
    const std::string title = titleOf(activeShow(), id);
    editSetlist(
        removal(withName("supprimer", title, "supprimer un morceau"),
                withName("Morceau supprimé\u00A0:", title, "Morceau supprimé")),
        [&](Show& show, std::int64_t cursor) { return editing::removeSong(show, id, cursor); });
}

void AppState::moveSong(const std::set<std::int64_t>& fromOffsets, std::int64_t toOffset) {
    const Song* song =
        fromOffsets.size() == 1 ? songAt(activeShow(), *fromOffsets.begin()) : nullptr;
    // A song that is dragged moves row by row.
    Edit edit = song ? oneOfMany(withName("déplacer", song->title, "déplacer un morceau"),
                                 "place " + song->id.toText())
                     : named("déplacer des morceaux");
    editSetlist(std::move(edit), [&](Show& show, std::int64_t cursor) {
        return editing::moveSongs(show, fromOffsets, toOffset, cursor);
    });
}

void AppState::updateSongTitle(Uuid id, std::string title) {
    editSong(id,
             oneOfMany(withName("renommer", titleOf(activeShow(), id), "nommer un morceau"),
                       "title " + id.toText()),
             [&](Song& song) { song.title = std::move(title); });
}

void AppState::updateSongLtcTimecode(Uuid id, std::optional<std::string> value) {
    editSong(id,
             named(withName("changer le timecode de", titleOf(activeShow(), id),
                            "changer le timecode d'un morceau")),
             [&](Song& song) { song.ltcTimecode = std::move(value); });
}

void AppState::updateSongDuration(Uuid id, std::optional<std::int64_t> seconds) {
    editSong(id,
             named(withName("changer la durée de", titleOf(activeShow(), id),
                            "changer la durée d'un morceau")),
             [&](Song& song) { song.duration = seconds; });
}

void AppState::addGuest(Uuid songId) {
    editActiveShow(
        named(withName("ajouter un guest à", titleOf(activeShow(), songId), "ajouter un guest")),
        [&](Show& show) { editing::addGuest(show, songId); });
}

void AppState::removeGuest(Uuid songId, Uuid guestId) {
    const std::string name = nameOf(activeShow(), songId, guestId);
    editActiveShow(removal(withName("retirer", name, "retirer un guest"),
                           withName("Guest retiré\u00A0:", name, "Guest retiré")),
                   [&](Show& show) { editing::removeGuest(show, songId, guestId); });
}

void AppState::updateGuest(Uuid songId, Uuid guestId, std::optional<std::string> name,
                           std::optional<std::string> mic, std::optional<std::string> iem) {
    const std::string present = nameOf(activeShow(), songId, guestId);
    Edit edit =
        name ? oneOfMany(withName("renommer", present, "nommer un guest"),
                         "guest " + songId.toText() + guestId.toText())
             : named(withName(mic ? "changer le micro de" : "changer l'IEM de", present,
                              mic ? "changer le micro d'un guest" : "changer l'IEM d'un guest"));
    editGuest(songId, guestId, std::move(edit), [&](Guest& guest) {
        guest.name = std::move(name).value_or(std::move(guest.name));
        guest.mic = std::move(mic).value_or(std::move(guest.mic));
        guest.iem = std::move(iem).value_or(std::move(guest.iem));
    });
}

void AppState::updateGuestVolume(Uuid songId, Uuid guestId, std::optional<std::string> volume) {
    editGuest(songId, guestId,
              named(withName("changer le volume de", nameOf(activeShow(), songId, guestId),
                             "changer le volume d'un guest")),
              [&](Guest& guest) { guest.volume = std::move(volume); });
}

void AppState::addLabel(const LabelList& list, std::string label) {
    if (!label.empty()) {
        editActiveShow(
            named(withName("ajouter", label, std::string("ajouter un ").append(list.noun))),
            [&](Show& show) { (show.*list.labels).push_back(std::move(label)); });
    }
}

void AppState::removeLabel(const LabelList& list, std::int64_t position) {
    const Show* active = activeShow();
    const std::string label = active ? labelAt(active->*list.labels, position) : std::string();
    const std::string happened = std::string(list.title).append(" retiré");
    editActiveShow(removal(withName("retirer", label, std::string("retirer un ").append(list.noun)),
                           withName(happened + "\u00A0:", label, happened)),
                   [&](Show& show) { editing::removeLabel(show.*list.labels, position); });
}

void AppState::updateLabel(const LabelList& list, std::int64_t position, std::string label) {
    const Show* active = activeShow();
    const std::string present = active ? labelAt(active->*list.labels, position) : std::string();
    editActiveShow(
        oneOfMany(withName("renommer", present, std::string("nommer un ").append(list.noun)),
                  std::string(list.noun).append(" ").append(std::to_string(position))),
        [&](Show& show) { editing::updateLabel(show.*list.labels, position, std::move(label)); });
}

}  // namespace tessivo
