#pragma once

#include "base/Uuid.h"
#include "model/Show.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// All shows, in list order, and the record that keeps them. The record is made at every keystroke
/// and may be large, so each show's JSON is kept beside it until the show changes: nothing changes
/// one but through here.
class ShowLibrary {
public:
    explicit ShowLibrary(std::vector<Show> shows = {});

    const std::vector<Show>& shows() const { return shows_; }

    /// Changes the show at this position, which must be one. `change` must not call the library.
    void edit(std::size_t position, const std::function<void(Show&)>& change);
    void append(Show show);
    /// Removes every show with this id.
    void erase(const Uuid& id);

    /// The same bytes as `encodeJson(PersistedData)`, in the same memory each time: valid until the
    /// next call.
    const std::string& record(const std::optional<Uuid>& activeShowId,
                              std::int64_t activeSongIndex);

private:
    std::vector<Show> shows_;
    std::vector<std::string> pieces_;  // for each show its JSON, empty when it changed since
    std::string record_;
};

}  // namespace tessivo
