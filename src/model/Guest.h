#pragma once

#include "base/Uuid.h"

#include <optional>
#include <string>

namespace tessivo {

/// One guest artist on a song. Names its microphone and IEM mix by their text, so renaming a label
/// in the show's lists never changes a guest.
struct Guest {
    Uuid id = Uuid::random();
    std::string name;
    std::string mic;                    ///< normally one of the show's `mics`; any text is accepted
    std::string iem;                    ///< normally one of the show's `iems`; any text is accepted
    std::optional<std::string> volume;  ///< free-text note for the monitor mix

    friend bool operator==(const Guest&, const Guest&) = default;
};

}  // namespace tessivo
