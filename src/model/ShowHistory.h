#pragma once

#include "model/Edit.h"
#include "model/ShowsChange.h"

#include <cstddef>
#include <deque>

namespace tessivo {

/// The edits of this run that can be taken back, and those taken back that can be made again.
///
/// At most `maximumSteps` are kept, and of those as many as take `maximumBytes`, the newest one
/// whatever it takes. An edited show costs its labels and the songs that were edited; one that was
/// deleted or imported costs all of it, so that a hundred shows of a thousand songs fit in.
class ShowHistory {
public:
    static constexpr std::size_t maximumSteps = 1000;
    static constexpr std::size_t maximumBytes = 128U << 20U;
    /// Edits of one field, or moves of one song, are one step until there was none for so long, in
    /// seconds.
    static constexpr double longestPause = 1.0;

    /// Adds an edit that was made; nothing can be made again from then on. An edit that changed
    /// nothing is no step.
    void add(ShowsChange change, Edit edit);
    /// The same for one that edited a show, `after` being what it is now. It may go on with the
    /// last step.
    void add(std::size_t position, Show before, const Show& after, Edit edit);

    /// What `undo` would take back and `redo` make again, or null.
    const Edit* undoable() const { return done_ > 0 ? &steps_[done_ - 1].edit : nullptr; }
    const Edit* redoable() const { return done_ < steps_.size() ? &steps_[done_].edit : nullptr; }

    /// Steps over an edit, of which there must be one, and gives its change.
    const ShowsChange& stepBack();
    const ShowsChange& stepForth();

private:
    struct Step {
        ShowsChange change;
        Edit edit;
    };

    void takeOff();
    bool goesOn(std::size_t position, const Edit& edit) const;

    std::deque<Step> steps_;
    std::size_t done_ = 0;   // of the steps, how many aren't taken back
    std::size_t bytes_ = 0;  // of all steps
    bool mayGoOn_ = false;   // the last thing that happened was the newest step
};

}  // namespace tessivo
