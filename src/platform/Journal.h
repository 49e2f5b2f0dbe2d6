#pragma once

#include "base/Instant.h"

#include <string>
#include <string_view>

namespace tessivo {

/// What happened and when, for whoever asks on the day after. Main thread only.
class Journal {
public:
    virtual ~Journal() = default;

    /// Adds one line, without its end, under the local day and time of `at`. Waits for no disk, and
    /// a failure hurts nobody.
    virtual void write(Instant at, std::string_view line) = 0;

    /// The file of the line written last; empty before one was.
    virtual std::string file() const = 0;
};

}  // namespace tessivo
