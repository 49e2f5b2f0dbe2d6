#pragma once

#include "base/Instant.h"
#include "base/Signal.h"
#include "base/Uuid.h"
#include "model/Show.h"
#include "platform/FileStore.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "state/UpdaterModel.h"
#include "timecode/LtcManager.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tessivo {

/// The single owner of everything that the operator works on: the shows, which one is open, the
/// live cursor and its clock, and the timecode manager. One instance lives for the whole run;
/// screens observe it and call its operations, and nothing else changes a show. Main thread only.
///
/// Every operation that changes the shows, the active show or the cursor ends by storing the whole
/// record, so that no crash can lose what the operator did. What couldn't be stored is tried again
/// each second. Invalid input is ignored silently.
class AppState {
public:
    /// The observable fields.
    enum class Field {
        shows,
        activeShowId,
        activeSongIndex,
        activeDisplayShowId,
        autoAdvanceEnabled,
        currentSongStartedAt,
        nowTick,
        updateAvailable,
        latestUpdateVersion,
        keepsShows,
    };

    /// The key of the record in the preferences store.
    static constexpr std::string_view storageKey = "pavona_data_v1";
    /// The file-name extension of show files, without the dot.
    static constexpr std::string_view showFileExtension = "tessivo";
    /// A backward move by hand keeps timecode from moving the cursor for this long, in seconds.
    static constexpr double autoAdvanceSuspension = 15.0;

    /// Restores the record, connects the timecode and starts the one-second clock.
    explicit AppState(const Platform& platform);
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;

    /// Emitted before and after each assignment to an observable field, also when the value stays
    /// the same.
    Signal<Field> willChange;
    Signal<Field> didChange;

    const std::vector<Show>& shows() const { return shows_; }
    const std::optional<Uuid>& activeShowId() const { return activeShowId_; }
    /// The live cursor: a position in the active show's songs; the number of songs means finished.
    std::int64_t activeSongIndex() const { return activeSongIndex_; }
    const std::optional<Uuid>& activeDisplayShowId() const { return activeDisplayShowId_; }
    bool autoAdvanceEnabled() const { return autoAdvanceEnabled_; }
    Instant currentSongStartedAt() const { return currentSongStartedAt_; }
    Instant nowTick() const { return nowTick_; }
    bool updateAvailable() const { return updateAvailable_; }
    const std::optional<std::string>& latestUpdateVersion() const { return latestUpdateVersion_; }

    /// False while what the operator does would be lost at the end of the run: another running
    /// program holds the record, or it can't be written. A record that is let go is taken over and
    /// read anew, unless shows or cursor were changed in this run: then it stays the other's.
    bool keepsShows() const { return keepsShows_; }

    LtcManager& ltcManager() { return ltcManager_; }
    const LtcManager& ltcManager() const { return ltcManager_; }
    UpdaterModel& updater() { return updater_; }

    /// The first show whose id is `id`; valid until the shows change.
    const Show* showWithId(const std::optional<Uuid>& id) const;
    /// The show that is open in the editor and on the live screen, or none.
    const Show* activeShow() const { return showWithId(activeShowId_); }

    /// Makes a show the active one; the cursor stays where it is.
    void setActiveShowId(std::optional<Uuid> id);
    /// Chooses the show that the stage display window presents.
    void setActiveDisplayShowId(std::optional<Uuid> id);
    void setAutoAdvanceEnabled(bool enabled);

    /// Appends a show as it is, even when its id is there already, and makes it active.
    void importShow(Show show);
    /// Writes the active show to the file it was last saved to or opened from in this run, or asks.
    void saveCurrentShow();
    void saveCurrentShowAs();
    /// Asks for a show file and makes its show active, in place of the one with the same id. A file
    /// that is no show changes nothing.
    void openShow();

    /// Appends a show with the usual labels and makes it active; an empty name becomes "Nouveau
    /// show".
    void createShow(std::string name);
    /// Removes every show with this id; the cursor stays.
    void deleteShow(Uuid id);

    // What follows edits the active show, and does nothing at all without one. Texts are kept as
    // given. Ids stand for the first match; unknown ids and positions outside the list change
    // nothing.

    void renameActiveShow(std::string name);  ///< an empty name is refused

    void addSong(std::string title);  ///< an empty title is refused
    /// Keeps the cursor on its song, or on a song when it was past the last one.
    void removeSong(Uuid id);
    /// Moves the songs at these positions in front of the one at `toOffset`, in their order; the
    /// number of songs means the end. Keeps the cursor on its song.
    void moveSong(const std::set<std::int64_t>& fromOffsets, std::int64_t toOffset);
    void updateSongTitle(Uuid id, std::string title);
    void updateSongLtcTimecode(Uuid id, std::optional<std::string> value);
    void updateSongDuration(Uuid id, std::optional<std::int64_t> seconds);

    /// Appends a nameless guest on the first microphone and the first IEM of the show.
    void addGuest(Uuid songId);
    void removeGuest(Uuid songId, Uuid guestId);
    /// Changes the fields that are given.
    void updateGuest(Uuid songId, Uuid guestId, std::optional<std::string> name,
                     std::optional<std::string> mic, std::optional<std::string> iem);
    void updateGuestVolume(Uuid songId, Uuid guestId, std::optional<std::string> volume);

    // A label is a text in a list of the show: guests that use it keep their own.

    void addMic(std::string label);  ///< an empty label is refused
    void removeMic(std::int64_t position);
    void updateMic(std::int64_t position, std::string label);
    void addIem(std::string label);  ///< an empty label is refused
    void removeIem(std::int64_t position);
    void updateIem(std::int64_t position, std::string label);

    /// Moves to the next song, from the last one to the finished position.
    void goNext();
    void goPrev();
    /// Moves to any position, unchecked.
    void jumpTo(std::int64_t index);
    /// Moves to the song whose trigger span holds this frame; called for every decoded frame.
    void checkLtcAutoAdvance(std::int64_t totalFrames, std::int64_t fps);
    /// Seconds left in the current song, none when there is no such song or it has no length.
    std::optional<std::int64_t> currentSongRemainingSeconds() const;

private:
    template <typename Value>
    void assign(Field field, Value& member, Value value) {
        change(field, [&] { member = std::move(value); });
    }
    template <typename Change>
    void change(Field field, Change&& apply) {
        willChange.emit(field);
        apply();
        didChange.emit(field);
    }

    void load();
    void save();
    void store();
    void goOnKeeping();
    void setKeepsShows(bool keeps);
    void restartCountdown();
    void startCountdownTimer();
    void suspendAutoAdvance();
    /// Applies `edit` to the active show and stores the record.
    template <typename Edit>
    void editActiveShow(Edit&& edit);
    /// The same for a change that may move the cursor: observers never see the new songs under the
    /// old cursor.
    template <typename Edit>
    void editSetlist(Edit&& edit);
    template <typename Edit>
    void editSong(Uuid id, Edit&& edit);
    template <typename Edit>
    void editGuest(Uuid songId, Uuid guestId, Edit&& edit);
    void addLabel(std::vector<std::string> Show::*list, std::string label);
    void removeLabel(std::vector<std::string> Show::*list, std::int64_t position);
    void updateLabel(std::vector<std::string> Show::*list, std::int64_t position,
                     std::string label);
    void writeShowFile(const FileLocation& location, const Show& show);

    Platform platform_;
    std::vector<Show> shows_;
    std::optional<Uuid> activeShowId_;
    std::int64_t activeSongIndex_ = 0;
    std::optional<Uuid> activeDisplayShowId_;
    LtcManager ltcManager_;
    bool autoAdvanceEnabled_ = true;
    Instant suspendedUntil_ = Instant::distantPast();
    Instant currentSongStartedAt_;
    Instant nowTick_;
    std::unique_ptr<MainQueue::Repetition> countdownTimer_;
    UpdaterModel updater_;
    bool updateAvailable_ = false;
    std::optional<std::string> latestUpdateVersion_;
    std::unordered_map<Uuid, FileLocation> lastSavedLocations_;  // this run only
    bool holdsRecord_ = false;
    bool keepsShows_ = false;
    bool recordHasChanged_ = false;  // in this run
    bool storedRecordIsUnreadable_ = false;
    std::string recordBytes_;  // what was stored last; its memory serves the next save
};

}  // namespace tessivo
