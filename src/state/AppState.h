#pragma once

#include "base/Instant.h"
#include "base/Moment.h"
#include "base/Signal.h"
#include "base/Uuid.h"
#include "model/ShowLibrary.h"
#include "platform/FileStore.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "state/Choices.h"
#include "state/TimecodeChoices.h"
#include "state/UpdaterModel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tessivo {

class LtcManager;

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
        lastFileError,
        isLocked,
        following,
        hasMovedUnconfirmed,
    };

    /// How timecode moves the cursor: in the first second of a song only, or to the song that it is
    /// in, wherever it begins.
    enum class Following { atStarts, byPosition };

    /// What moved the cursor.
    enum class MovedBy { key, click, timecode, resumption };

    /// The key of the record in the preferences store.
    static constexpr std::string_view storageKey = "pavona_data_v1";
    /// The key of the lock beside it; written once somebody locks.
    static constexpr std::string_view lockKey = "live_lock_v1";
    /// The key of the way of following beside it.
    static constexpr std::string_view followingKey = "ltc_following_v1";
    /// The file-name extension of show files, without the dot.
    static constexpr std::string_view showFileExtension = "tessivo";
    /// A backward move by hand keeps timecode from moving the cursor for this long, in seconds.
    static constexpr double autoAdvanceSuspension = 15.0;

    /// For how long taking back a removal is offered, in seconds.
    static constexpr double undoOffer = 8.0;

    /// Restores the record, connects the timecode and starts the one-second clock.
    explicit AppState(const Platform& platform);
    AppState(const AppState&) = delete;
    AppState& operator=(const AppState&) = delete;
    ~AppState();

    /// Emitted before and after each assignment to an observable field, also when the value stays
    /// the same.
    Signal<Field> willChange;
    Signal<Field> didChange;

    const std::vector<Show>& shows() const { return library_.shows(); }
    const std::optional<Uuid>& activeShowId() const { return activeShowId_; }
    /// The live cursor: a position in the active show's songs; the number of songs means finished.
    std::int64_t activeSongIndex() const { return activeSongIndex_; }
    /// What moved the cursor last, and so set `currentSongStartedAt`.
    MovedBy movedBy() const { return movedBy_; }
    const std::optional<Uuid>& activeDisplayShowId() const { return activeDisplayShowId_; }
    bool autoAdvanceEnabled() const { return autoAdvanceEnabled_; }
    Following following() const { return following_; }
    /// Whether timecode moved the cursor, since the capture began, to where no confirmed timecode
    /// was within the next second: noise did it, or a misread frame.
    bool hasMovedUnconfirmed() const { return hasMovedUnconfirmed_; }
    Instant currentSongStartedAt() const { return currentSongStartedAt_; }
    Instant nowTick() const { return nowTick_; }
    bool updateAvailable() const { return updateAvailable_; }
    const std::optional<std::string>& latestUpdateVersion() const { return latestUpdateVersion_; }

    /// False while what the operator does would be lost at the end of the run: another running
    /// program holds the record, or it can't be written. A record that is let go is taken over and
    /// read anew, unless shows or cursor were changed in this run: then it stays the other's.
    bool keepsShows() const { return keepsShows_; }

    /// Why a show file was refused last, a French sentence.
    const std::optional<std::string>& lastFileError() const { return lastFileError_; }

    /// Whether the live screen is locked, which outlasts a restart. As long as it is, nothing
    /// changes a show or leaves the live screen: the operations that would, and the file panels,
    /// which would take the keyboard from it, do nothing. The cursor, the timecode and the stage
    /// windows go on. After a restart a show may be opened, which is the way back.
    bool isLocked() const { return isLocked_; }
    void setLocked(bool locked);

    /// What was chosen on this computer. Written at once, and again each second until it is kept.
    Choices& choices() { return choices_; }

    LtcManager& ltcManager() { return *ltcManager_; }
    UpdaterModel& updater() { return updater_; }

    /// The first show whose id is `id`; valid until the shows change.
    const Show* showWithId(const std::optional<Uuid>& id) const;
    /// The show that is open in the editor and on the live screen, or none.
    const Show* activeShow() const { return showWithId(activeShowId_); }

    /// Makes a show the active one; the cursor stays where it is. Locked, that works only while no
    /// show is active.
    void setActiveShowId(std::optional<Uuid> id);
    /// Chooses the show that the stage display window presents.
    void setActiveDisplayShowId(std::optional<Uuid> id);
    void setAutoAdvanceEnabled(bool enabled);
    /// Kept on this computer.
    void setFollowing(Following following);

    /// Appends a show as it is, even when its id is there already, and makes it active.
    void importShow(Show show);
    /// Writes the active show to the file it was last saved to or opened from in this run, or asks.
    /// A show too large to be opened again isn't written, which is told.
    void saveCurrentShow();
    void saveCurrentShowAs();
    /// Asks for a show file and makes its show active, in place of the one with the same id. A file
    /// that is no show changes nothing; one that is too large for a show is told. True when a show
    /// was opened.
    bool openShow();
    /// The same with a file that was chosen elsewhere.
    bool openShowFile(const FileLocation& location);

    /// Goes on leading a show that another computer led: makes it active like one that is opened,
    /// with this cursor and the countdown of a song that began at `startedAt`. Locked, too: the
    /// lock is on what was led here before.
    void takeOver(Show show, std::int64_t songIndex, Instant startedAt);
    /// Goes on leading a show of this computer after a crash: makes it active where the cursor is,
    /// with the countdown of a song that began at `startedAt`.
    void resume(Uuid showId, Instant startedAt);

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

    // A label is a text in a list of the show: guests that use it keep their own. An empty one is
    // refused, but a label may be made empty.

    void addMic(std::string label) { addLabel(micList, std::move(label)); }
    void removeMic(std::int64_t position) { removeLabel(micList, position); }
    void updateMic(std::int64_t position, std::string label) {
        updateLabel(micList, position, std::move(label));
    }
    void addIem(std::string label) { addLabel(iemList, std::move(label)); }
    void removeIem(std::int64_t position) { removeLabel(iemList, position); }
    void updateIem(std::int64_t position, std::string label) {
        updateLabel(iemList, position, std::move(label));
    }

    // Every change of the shows in this run can be taken back, the newest first, and made again.
    // Neither moves the cursor from its song or touches the countdown, and neither opens a show.

    /// What `undo` and `redo` would do, null for nothing; good until the shows change.
    const Edit* undoableEdit() const { return library_.history().undoable(); }
    const Edit* redoableEdit() const { return library_.history().redoable(); }
    /// `undoableEdit` while it is a removal of the last `undoOffer` seconds, else null. The passing
    /// of the time is told by `nowTick`.
    const Edit* offeredUndo() const;
    void undo();
    void redo();

    /// Moves to the next song, from the last one to the finished position. This and `goPrev` are
    /// what the keys do.
    void goNext();
    void goPrev();
    /// Moves to any position, unchecked: the one that was clicked on.
    void jumpTo(std::int64_t index);
    /// Moves to the song whose trigger span holds this frame; called for every decoded frame.
    void checkLtcAutoAdvance(std::int64_t totalFrames, std::int64_t fps);
    /// Seconds left in the current song, none when there is no such song or it has no length.
    std::optional<std::int64_t> currentSongRemainingSeconds() const;

private:
    /// One of a show's two lists of labels, and what one of it is called.
    struct LabelList {
        std::vector<std::string> Show::*labels;
        std::string_view noun;
        std::string_view title;
    };
    static constexpr LabelList micList{&Show::mics, "micro", "Micro"};
    static constexpr LabelList iemList{&Show::iems, "IEM", "IEM"};

    void load();
    void save();
    void store();
    void goOnKeeping();
    void setKeepsShows(bool keeps);
    /// Tells the observers before and after.
    void change(Field field, const std::function<void()>& apply);
    template <typename Value>
    void assign(Field field, Value& member, std::type_identity_t<Value> value) {
        change(field, [&] { member = std::move(value); });
    }
    std::size_t positionOf(const Show& show) const;
    // What an edit is called: one like any other, one of those that make one step, one that
    // removes.
    Edit named(std::string name) const;
    Edit oneOfMany(std::string name, std::string field) const;
    Edit removal(std::string name, std::string whatHappened) const;
    void append(Show show, std::string_view words);
    /// Puts a show in the place of the one with the same id, or at the end.
    void replaceOrAppend(Show show, Edit edit);
    /// Edits the active show and stores the record.
    void editActiveShow(Edit edit, const std::function<void(Show&)>& apply);
    /// The same for an edit that gives the cursor's place after it: observers never see the new
    /// songs under the old cursor.
    void editSetlist(Edit edit,
                     const std::function<std::int64_t(Show&, std::int64_t cursor)>& apply);
    void editSong(Uuid id, Edit edit, const std::function<void(Song&)>& apply);
    void editGuest(Uuid songId, Uuid guestId, Edit edit, const std::function<void(Guest&)>& apply);
    void addLabel(const LabelList& list, std::string label);
    void removeLabel(const LabelList& list, std::int64_t position);
    void updateLabel(const LabelList& list, std::int64_t position, std::string label);
    /// Takes an edit back or makes it again, and stores the record.
    void step(const std::function<void()>& apply);
    /// Makes a show that has just come active, under this cursor, and stores the record.
    void activate(Uuid id, std::int64_t songIndex = 0);
    /// Moves the cursor, starts the countdown of its song, which began `secondsAgo`, and stores the
    /// record.
    void moveCursor(std::int64_t index, MovedBy by, double secondsAgo = 0.0);
    void followTimecode();
    /// Whether timecode may move the cursor now.
    bool mayAutoAdvance() const;
    void tellAdvance(std::size_t song);
    /// Moves to the song that confirmed timecode is in, when that has changed: until then, what was
    /// done by hand stays.
    void followPosition(std::int64_t totalFrames, std::int64_t fps);
    void judgeMove();
    /// The same by hand: going back holds the timecode off.
    void moveByHand(std::int64_t index, MovedBy by);
    /// Counts from when the song under the cursor began.
    void startCountdown(Instant startedAt);
    void startCountdownTimer();
    void tick();
    void writeShowFile(const FileLocation& location, const Show& show);

    Platform platform_;
    ShowLibrary library_;
    std::optional<Uuid> activeShowId_;
    std::int64_t activeSongIndex_ = 0;
    MovedBy movedBy_ = MovedBy::key;
    std::optional<Uuid> activeDisplayShowId_;
    std::unique_ptr<LtcManager> ltcManager_;
    bool autoAdvanceEnabled_ = true;
    Following following_ = Following::atStarts;
    std::optional<Uuid> songPlaying_;              ///< by the position of the timecode
    std::optional<std::int64_t> unconfirmedMove_;  ///< the frame that moved the cursor, in frames
    bool hasMovedUnconfirmed_ = false;
    Moment suspendedUntil_ = Moment::distantPast();
    Instant currentSongStartedAt_;
    Instant nowTick_;
    Moment countdownStart_;          // of the current song
    double countdownElapsed_ = 0.0;  // seconds, at the last tick
    std::unique_ptr<MainQueue::Repetition> countdownTimer_;
    UpdaterModel updater_;
    bool updateAvailable_ = false;
    std::optional<std::string> latestUpdateVersion_;
    std::optional<std::string> lastFileError_;
    Choices choices_;
    TimecodeChoices timecodeChoices_;
    Subscription captureFollower_;
    bool isLocked_ = false;
    std::unordered_map<Uuid, FileLocation> lastSavedLocations_;  // this run only
    bool holdsRecord_ = false;
    bool keepsShows_ = false;
    bool recordHasChanged_ = false;  // in this run
    bool storedRecordIsUnreadable_ = false;
};

}  // namespace tessivo
