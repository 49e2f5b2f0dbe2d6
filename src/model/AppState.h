#pragma once

#include "base/Instant.h"
#include "base/Signal.h"
#include "base/Uuid.h"
#include "model/Show.h"
#include "model/UpdaterModel.h"
#include "platform/FileStore.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "timecode/LtcManager.h"

#include <cstdint>
#include <memory>
#include <optional>
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
/// record, so that no crash can lose what the operator did. Invalid input is ignored silently.
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
    void restartCountdown();
    void startCountdownTimer();
    void suspendAutoAdvance();
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
    bool storedRecordIsUnreadable_ = false;
    std::string recordBytes_;  // what was stored last; its memory serves the next save
};

}  // namespace tessivo
