#pragma once

#include "base/Uuid.h"
#include "model/Show.h"
#include "model/ShowHistory.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// All shows, in list order, the record that keeps them, and the edits that can be taken back. The
/// record is made at every keystroke and may be large, so each show's JSON is kept beside it until
/// the show changes: nothing changes one but through here.
class ShowLibrary {
public:
    explicit ShowLibrary(std::vector<Show> shows = {});

    const std::vector<Show>& shows() const { return shows_; }
    const ShowHistory& history() const { return history_; }

    /// Changes the show at this position, which must be one. `change` must not call the library.
    void edit(std::size_t position, Edit edit, const std::function<void(Show&)>& change);
    void append(Show show, Edit edit);
    /// Removes every show with this id.
    void erase(const Uuid& id, Edit edit);

    /// Takes the last edit back, or makes the one again that was taken back last. There must be
    /// one.
    void undo();
    void redo();

    /// The same bytes as `encodeJson(PersistedData)`, in the same memory each time: valid until the
    /// next call.
    const std::string& record(const std::optional<Uuid>& activeShowId,
                              std::int64_t activeSongIndex);

private:
    void redo(const ShowsChange& change);
    void forgetPieces(std::size_t position, std::size_t gone, std::size_t come);

    std::vector<Show> shows_;
    std::vector<std::string> pieces_;  // for each show its JSON, empty when it changed since
    std::string record_;
    ShowHistory history_;
};

}  // namespace tessivo
