#include "model/ShowLibrary.h"

#include "model/PersistedData.h"
#include "model/ShowJson.h"

#include <cassert>
#include <string_view>
#include <utility>

namespace tessivo {

ShowLibrary::ShowLibrary(std::vector<Show> shows)
    : shows_(std::move(shows)), pieces_(shows_.size()) {}

void ShowLibrary::edit(std::size_t position, const std::function<void(Show&)>& change) {
    assert(position < shows_.size());
    pieces_[position].clear();
    change(shows_[position]);
}

void ShowLibrary::append(Show show) {
    shows_.push_back(std::move(show));
    pieces_.emplace_back();
}

void ShowLibrary::erase(const Uuid& id) {
    for (std::size_t i = shows_.size(); i-- > 0;) {
        if (shows_[i].id == id) {
            shows_.erase(shows_.begin() + static_cast<std::ptrdiff_t>(i));
            pieces_.erase(pieces_.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }
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
