#include "model/ShowJson.h"
#include "platform/FilePanels.h"
#include "state/AppState.h"

#include <algorithm>
#include <utility>

namespace tessivo {
namespace {

/// A show of a thousand songs takes half a megabyte: what is longer than this is no show, and
/// reading it would only freeze the screen.
constexpr std::size_t maximumShowFileBytes = 32U << 20U;

}  // namespace

void AppState::importShow(Show show) {
    const Uuid id = show.id;
    change(Field::shows, [&] { shows_.push_back(std::move(show)); });
    assign<std::optional<Uuid>>(Field::activeShowId, activeShowId_, id);
    assign<std::int64_t>(Field::activeSongIndex, activeSongIndex_, 0);
    save();
}

void AppState::saveCurrentShow() {
    const Show* show = activeShow();
    if (!show) {
        return;
    }
    if (const auto known = lastSavedLocations_.find(show->id); known != lastSavedLocations_.end()) {
        writeShowFile(known->second, *show);
    } else {
        saveCurrentShowAs();
    }
}

void AppState::saveCurrentShowAs() {
    const Show* show = activeShow();
    if (!show) {
        return;
    }
    const Uuid id = show->id;
    const std::string extension(showFileExtension);
    const auto location = platform_.panels.chooseSaveLocation(
        {"Enregistrer le show", show->name + "." + extension, extension});
    // While the panel was open, timecode may have moved the cursor, but no operation runs that
    // could change the shows from under it; look the show up again all the same.
    show = showWithId(id);
    if (!location || !show) {
        return;
    }
    writeShowFile(*location, *show);
    lastSavedLocations_[id] = *location;
}

void AppState::openShow() {
    const auto location =
        platform_.panels.chooseFileToOpen({"Ouvrir un show", std::string(showFileExtension)});
    if (!location) {
        return;
    }
    const auto bytes = platform_.files.read(*location, maximumShowFileBytes);
    std::optional<Show> show = bytes ? decodeShow(*bytes) : std::nullopt;
    if (!show) {
        return;
    }
    const Uuid id = show->id;
    change(Field::shows, [&] {
        const auto same = std::find_if(shows_.begin(), shows_.end(),
                                       [&](const Show& known) { return known.id == id; });
        if (same != shows_.end()) {
            *same = std::move(*show);
        } else {
            shows_.push_back(std::move(*show));
        }
    });
    lastSavedLocations_[id] = *location;
    assign<std::optional<Uuid>>(Field::activeShowId, activeShowId_, id);
    assign<std::int64_t>(Field::activeSongIndex, activeSongIndex_, 0);
    save();
}

void AppState::writeShowFile(const FileLocation& location, const Show& show) {
    platform_.files.writeAtomically(location, encodeJson(show));
}

}  // namespace tessivo
