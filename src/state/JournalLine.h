#pragma once

#include "state/AppState.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

namespace tessivo::journal {

// What happens in an evening, as values.

struct ProgramBegins {};
struct ProgramEnds {};
struct ShowOpened {
    std::string name;
};
/// The cursor was moved, on a song or past the last one.
struct CursorMoved {
    std::int64_t index = 0;
    std::size_t songCount = 0;
    std::string title;  ///< of the song there
    AppState::MovedBy by{};
};
struct Capture {
    bool runs = false;
};
/// A sentence about the audio input.
struct InputFailed {
    std::string reason;
};
struct Signal {
    bool isThere = false;
    std::string timecode;  ///< of a signal that was found
};
struct Stations {
    std::size_t before = 0;
    std::size_t now = 0;
};
struct Lock {
    bool isLocked = false;
};
/// Whether what is done to the shows is stored.
struct Keeping {
    bool keeps = false;
};
/// A sentence about a show file.
struct FileRefused {
    std::string reason;
};

using Event = std::variant<ProgramBegins, ProgramEnds, ShowOpened, CursorMoved, Capture,
                           InputFailed, Signal, Stations, Lock, Keeping, FileRefused>;

/// How the journal tells it, French.
std::string lineFor(const Event& event);

}  // namespace tessivo::journal
