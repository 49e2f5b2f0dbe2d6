#include "model/ShowLibrary.h"

#include "model/PersistedData.h"
#include "model/ShowJson.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <string_view>
#include <utility>

namespace tessivo {

ShowLibrary::ShowLibrary(std::vector<Show> shows)
    : shows_(std::move(shows)), pieces_(shows_.size()) {}

void ShowLibrary::edit(std::size_t position, Edit edit, const std::function<void(Show&)>& change) {
    assert(position < shows_.size());
    Show before = shows_[position];
    change(shows_[position]);
    pieces_[position].clear();
    history_.add(position, std::move(before), shows_[position], std::move(edit));
}

void ShowLibrary::append(Show show, Edit edit) {
    history_.add({shows_.size(), {}, {show}}, std::move(edit));
    shows_.push_back(std::move(show));
    pieces_.emplace_back();
}

void ShowLibrary::erase(const Uuid& id, Edit edit) {
    const auto isIt = [&](const Show& show) { return show.id == id; };
    const auto first = std::ranges::find_if(shows_, isIt);
    const auto end = std::find_if(shows_.rbegin(), std::reverse_iterator(first), isIt).base();
    ShowsChange change{
        static_cast<std::size_t>(first - shows_.begin()), {first, end}, {first, end}};
    std::erase_if(change.after, isIt);
    redo(change);
    history_.add(std::move(change), std::move(edit));
}

void ShowLibrary::undo() {
    const ShowsChange& change = history_.stepBack();
    change.undo(shows_);
    forgetPieces(change.position, change.after.size(), change.before.size());
}

void ShowLibrary::redo() {
    redo(history_.stepForth());
}

void ShowLibrary::redo(const ShowsChange& change) {
    change.redo(shows_);
    forgetPieces(change.position, change.before.size(), change.after.size());
}

/// Of the shows from `position` on, `gone` have made place for `come` others.
void ShowLibrary::forgetPieces(std::size_t position, std::size_t gone, std::size_t come) {
    const auto place = pieces_.begin() + static_cast<std::ptrdiff_t>(position);
    pieces_.insert(pieces_.erase(place, place + static_cast<std::ptrdiff_t>(gone)), come, "");
    assert(pieces_.size() == shows_.size());
}

const std::string& ShowLibrary::record(const std::optional<Uuid>& activeShowId,
                                       std::int64_t activeSongIndex) {
    // The record without a show; theirs go into its list.
    const std::string frame = encodeJson(PersistedData{{}, activeShowId, activeSongIndex});
    const std::size_t inList = frame.find('[') + 1;
    record_.assign(frame, 0, inList);
    for (std::size_t i = 0; i < shows_.size(); ++i) {
        if (pieces_[i].empty()) {
            pieces_[i] = encodeJson(shows_[i]);
        }
        record_.append(i == 0 ? "" : ",").append(pieces_[i]);
    }
    return record_.append(frame, inList);
}

}  // namespace tessivo
