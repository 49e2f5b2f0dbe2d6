#include "model/ShowJson.h"
#include "platform/Clock.h"
#include "platform/FilePanels.h"
#include "state/AppState.h"
#include "state/EditNames.h"

#include <cstddef>
#include <utility>

namespace tessivo {
namespace {

/// A show of a thousand songs takes half a megabyte: what is longer than this is no show, and
/// reading it would only freeze the screen.
constexpr std::size_t maximumShowFileBytes = 32U << 20U;

}  // namespace

void AppState::saveCurrentShow() {
    const Show* show = activeShow();
    if (!show || isLocked_) {
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
    if (!show || isLocked_) {
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

bool AppState::openShow() {
    if (isLocked_) {
        return false;
    }
    const auto location =
        platform_.panels.chooseFileToOpen({"Ouvrir un show", std::string(showFileExtension)});
    return location && openShowFile(*location);
}

bool AppState::openShowFile(const FileLocation& location) {
    if (isLocked_) {  // also while a panel was open
        return false;
    }
    const auto bytes = platform_.files.read(location, maximumShowFileBytes);
    if (!bytes && platform_.files.isLongerThan(location, maximumShowFileBytes)) {
        assign(Field::lastFileError, lastFileError_,
               "Ce fichier n'est pas ouvert\u00A0: il dépasse les 32 Mo qu'un show peut prendre.");
    }
    std::optional<Show> show = bytes ? decodeShow(*bytes) : std::nullopt;
    if (!show) {
        return false;
    }
    const Uuid id = show->id;
    Edit edit = named(withName("ouvrir le show", show->name, "ouvrir un show"));
    replaceOrAppend(std::move(*show), std::move(edit));
    lastSavedLocations_[id] = location;
    activate(id);
    return true;
}

void AppState::takeOver(Show show, std::int64_t songIndex, Instant startedAt) {
    const Uuid id = show.id;
    Edit edit = named(withName("reprendre le show", show.name, "reprendre un show"));
    replaceOrAppend(std::move(show), std::move(edit));
    activate(id, songIndex);
    movedBy_ = MovedBy::resumption;
    startCountdown(startedAt);
}

void AppState::resume(Uuid showId, Instant startedAt) {
    setActiveShowId(showId);
    movedBy_ = MovedBy::resumption;
    startCountdown(startedAt);
}

void AppState::replaceOrAppend(Show show, Edit edit) {
    change(Field::shows, [&] {
        if (const Show* same = showWithId(show.id)) {
            library_.edit(positionOf(*same), std::move(edit),
                          [&](Show& known) { known = std::move(show); });
        } else {
            library_.append(std::move(show), std::move(edit));
        }
    });
}

void AppState::writeShowFile(const FileLocation& location, const Show& show) {
    const std::string bytes = encodeJson(show);
    if (bytes.size() > maximumShowFileBytes) {
        assign(
            Field::lastFileError, lastFileError_,
            "Ce show n'est pas enregistré\u00A0: il dépasse les 32 Mo d'un fichier qui peut être "
            "rouvert.");
        return;
    }
    platform_.files.writeAtomically(location, bytes);
}

}  // namespace tessivo
