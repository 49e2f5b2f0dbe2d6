#include "model/ShowHistory.h"

#include <cassert>
#include <utility>

namespace tessivo {

void ShowHistory::add(ShowsChange change, Edit edit) {
    if (change.isNone()) {
        return;
    }
    while (steps_.size() > done_) {
        takeOff();
    }
    if (joins(change, edit)) {
        change.before = steps_.back().change.before;
        edit.name = steps_.back().edit.name;
        takeOff();
    }
    isTyping_ = !change.isNone();
    if (isTyping_) {
        bytes_ += change.bytes();
        steps_.push_back({std::move(change), std::move(edit)});
    }
    while (steps_.size() > maximumSteps || (bytes_ > maximumBytes && steps_.size() > 1)) {
        bytes_ -= steps_.front().change.bytes();
        steps_.pop_front();
    }
    done_ = steps_.size();
}

void ShowHistory::takeOff() {
    bytes_ -= steps_.back().change.bytes();
    steps_.pop_back();
}

/// Whether the edit goes on with the last one: the same field, of the same record in its place.
bool ShowHistory::joins(const ShowsChange& change, const Edit& edit) const {
    if (!isTyping_ || steps_.empty() || edit.field.empty()) {
        return false;
    }
    const Step& last = steps_.back();
    const double pause = edit.at - last.edit.at;
    return edit.field == last.edit.field && pause >= 0 && pause < longestPause &&
           change.position == last.change.position && change.sameSongs == last.change.sameSongs &&
           change.before == last.change.after;
}

const ShowsChange& ShowHistory::stepBack() {
    assert(undoable());
    isTyping_ = false;
    return steps_[--done_].change;
}

const ShowsChange& ShowHistory::stepForth() {
    assert(redoable());
    isTyping_ = false;
    return steps_[done_++].change;
}

}  // namespace tessivo
