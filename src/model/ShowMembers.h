#pragma once

#include "model/Guest.h"
#include "model/JsonFields.h"
#include "model/PersistedData.h"
#include "model/Show.h"
#include "model/Song.h"

/// The JSON members of the show records; see model/JsonFields.h.
namespace tessivo {

template <JsonRecord<Guest> Record, typename Visit>
bool visitMembers(Record& guest, Visit visit) {
    return visit("id", guest.id) && visit("name", guest.name) && visit("mic", guest.mic) &&
           visit("iem", guest.iem) && visit("volume", guest.volume);
}

template <JsonRecord<Song> Record, typename Visit>
bool visitMembers(Record& song, Visit visit) {
    return visit("id", song.id) && visit("title", song.title) && visit("guests", song.guests) &&
           visit("ltcTimecode", song.ltcTimecode) && visit("duration", song.duration);
}

template <JsonRecord<Show> Record, typename Visit>
bool visitMembers(Record& show, Visit visit) {
    return visit("id", show.id) && visit("name", show.name) && visit("mics", show.mics) &&
           visit("iems", show.iems) && visit("songs", show.songs);
}

template <JsonRecord<PersistedData> Record, typename Visit>
bool visitMembers(Record& data, Visit visit) {
    return visit("shows", data.shows) && visit("activeShowId", data.activeShowId) &&
           visit("activeSongIndex", data.activeSongIndex);
}

}  // namespace tessivo
