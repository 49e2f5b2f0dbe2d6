#pragma once

#include "model/Show.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The rules by which a show is edited. Texts are kept as given. An id stands for the first record
/// that has it; an id that nothing has and a position outside the list change nothing.
namespace tessivo::editing {

/// Gives the place of the live cursor afterwards: it stays on its song, or on a song when it was
/// past the last one.
std::int64_t removeSong(Show& show, Uuid id, std::int64_t cursor);
/// Moves the songs at the positions `from` in front of the one at `to`, in their order; the number
/// of songs means the end. Gives the place of the live cursor afterwards, on its song.
std::int64_t moveSongs(Show& show, const std::set<std::int64_t>& from, std::int64_t to,
                       std::int64_t cursor);

/// The cursor's place in a show that became another under it: on the song that it was on, if there
/// was one and it is still there, else where it was, or at the end.
std::int64_t cursorOn(const Show& show, const std::optional<Uuid>& songId, std::int64_t cursor);

/// Adds a nameless guest on the show's first microphone and first IEM.
void addGuest(Show& show, Uuid songId);
/// Removes every guest of the song with this id.
void removeGuest(Show& show, Uuid songId, Uuid guestId);

// A show's microphones and its IEMs are edited alike. Guests keep the texts that they have.

void removeLabel(std::vector<std::string>& labels, std::int64_t position);
void updateLabel(std::vector<std::string>& labels, std::int64_t position, std::string label);

}  // namespace tessivo::editing
