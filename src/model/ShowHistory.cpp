#include "model/ShowHistory.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tessivo {

void ShowHistory::add(std::size_t position, Show before, const Show& after, Edit edit) {
    if (goesOn(position, edit)) {
        before = steps_.back().change.undone(before);
        edit.name = std::move(steps_.back().edit.name);
        takeOff();
    }
    add(ShowsChange::ofEdit(position, std::move(before), after), std::move(edit));
}

void ShowHistory::add(ShowsChange change, Edit edit) {
    if (change.isNone()) {
        return;
    }
    while (steps_.size() > done_) {
        takeOff();
    }
    bytes_ += change.bytes();
    steps_.push_back({std::move(change), std::move(edit)});
    while (steps_.size() > maximumSteps || (bytes_ > maximumBytes && steps_.size() > 1)) {
        bytes_ -= steps_.front().change.bytes();
        steps_.pop_front();
    }
    done_ = steps_.size();
    mayGoOn_ = true;
}

/// Takes off the newest step, which then is neither undone nor done.
void ShowHistory::takeOff() {
    bytes_ -= steps_.back().change.bytes();
    steps_.pop_back();
    done_ = std::min(done_, steps_.size());
    mayGoOn_ = false;
}

/// Whether an edit of the show at this position goes on with the newest step.
bool ShowHistory::goesOn(std::size_t position, const Edit& edit) const {
    if (!mayGoOn_ || edit.field.empty()) {
        return false;
    }
    const Step& last = steps_.back();
    const double pause = edit.at - last.edit.at;
    return edit.field == last.edit.field && position == last.change.position && pause >= 0 &&
           pause < longestPause;
}

const ShowsChange& ShowHistory::stepBack() {
    assert(undoable());
    mayGoOn_ = false;
    return steps_[--done_].change;
}

const ShowsChange& ShowHistory::stepForth() {
    assert(redoable());
    mayGoOn_ = false;
    return steps_[done_++].change;
}

}  // namespace tessivo
