#pragma once

#include "model/Show.h"

#include <cstddef>
#include <vector>

namespace tessivo {

/// How the list of shows changed at one place: all that it takes to go back and forth, and of a
/// show that was edited only the songs between those that stayed.
struct ShowsChange {
    std::size_t position = 0;  ///< in the list
    std::vector<Show> before;  ///< what stood there
    std::vector<Show> after;   ///< what stands there since
    /// Of one show in another's place: how many songs at their beginning are the same. Those, and
    /// the same ones at their end, are in neither of the above.
    std::size_t sameSongs = 0;

    /// One show was edited.
    static ShowsChange ofEdit(std::size_t position, Show before, const Show& after);

    bool isNone() const { return before == after; }
    /// About how much memory it takes.
    std::size_t bytes() const;

    /// Takes the change back in a list that was changed by it, or makes it again.
    void undo(std::vector<Show>& shows) const { replace(shows, after, before); }
    void redo(std::vector<Show>& shows) const { replace(shows, before, after); }
    /// The show that was edited, as it was before; `edited` is as the edit left it.
    Show undone(const Show& edited) const {
        return exchanged(edited, after.front(), before.front());
    }

private:
    Show exchanged(const Show& present, const Show& there, const Show& wanted) const;
    void replace(std::vector<Show>& shows, const std::vector<Show>& there,
                 const std::vector<Show>& wanted) const;
};

}  // namespace tessivo
