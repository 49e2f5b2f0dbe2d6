#include "state/Resumption.h"

#include "base/Text.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "state/AppState.h"
#include "timecode/LtcManager.h"

#include <utility>

namespace tessivo {

Resumption::Resumption(AppState& state, const Platform& platform)
    : state_(state),
      clock_(platform.clock),
      mainQueue_(platform.mainQueue),
      keeping_(platform.mainQueue) {
    load();
    stateChanges_ = state.didChange.subscribe([this](AppState::Field field) {
        switch (field) {
            case AppState::Field::currentSongStartedAt:
                keep();  // at once: whatever the new song does to the program, it is known
                break;
            case AppState::Field::keepsShows:
                load();
                break;
            case AppState::Field::nowTick:
                break;
            default:
                keepSoon();
        }
    });
    captureChanges_ = state.ltcManager().didChange.subscribe([this](LtcManager::Field field) {
        if (field == LtcManager::Field::isCapturing) {
            keepSoon();
        }
    });
}

Resumption::~Resumption() {
    state_.choices().remove(key);
}

/// What another program keeps that still runs is its own.
void Resumption::load() {
    if (!leads_ && state_.keepsShows()) {
        const auto bytes = state_.choices().get(key);
        left_ = bytes ? decodeResumePoint(*bytes) : std::nullopt;
    }
}

std::optional<Resumption::Offer> Resumption::offer() const {
    const Instant now = state_.nowTick();
    if (!left_ || !isRecent(*left_, now)) {
        return std::nullopt;
    }
    if (!left_->leads) {
        return Offer{false, "Reprendre l'affichage", "Ce poste suivait le show à distance"};
    }
    const Show* show = state_.showWithId(left_->showId);
    if (!show) {
        return std::nullopt;
    }
    const std::int64_t index = state_.activeSongIndex();
    const std::string_view name = trimSpacesAndLineBreaks(show->name);
    return Offer{true, name.empty() ? "Reprendre" : std::string("Reprendre\u00A0: ").append(name),
                 resumeText(*show, index, now - songStart(*left_, songAt(show, index), now))};
}

void Resumption::begin(bool leads) {
    left_.reset();
    leads_ = leads;
    kept_.reset();
    refreshing_ = mainQueue_.repeatEvery(refreshInterval, [this] {
        kept_.reset();
        keep();
    });
    keep();
}

void Resumption::leave() {
    leads_.reset();
    refreshing_.reset();
    if (!left_) {
        state_.choices().remove(key);
    }
}

std::vector<WindowPlace> Resumption::goOn() {
    if (!offer()) {
        return {};
    }
    if (const Show* show = left_->leads ? state_.showWithId(left_->showId) : nullptr) {
        const Song* song = songAt(show, state_.activeSongIndex());
        state_.setAutoAdvanceEnabled(left_->followsTimecode);
        state_.setActiveDisplayShowId(left_->displayedShowId);
        state_.resume(show->id, songStart(*left_, song, clock_.now()));
        if (left_->input) {
            state_.ltcManager().resumeCapturing(*left_->input);
        }
    }
    return left_->windows;
}

void Resumption::setPlace(WindowPlace place) {
    removePlace(place.window);
    places_.push_back(std::move(place));
}

void Resumption::removePlace(std::string_view window) {
    std::erase_if(places_, [&](const WindowPlace& place) { return place.window == window; });
    keepSoon();
}

void Resumption::keepSoon() {
    keeping_.callOff();
    keeping_.post([this] { keep(); });
}

ResumePoint Resumption::present() const {
    const LtcManager& timecode = state_.ltcManager();
    const Show* show = state_.activeShow();
    const Song* song = songAt(show, state_.activeSongIndex());
    return {
        .keptAt = clock_.now(),
        .leads = *leads_,
        .showId = show ? std::optional(show->id) : std::nullopt,
        .songId = song ? std::optional(song->id) : std::nullopt,
        .songStartedAt = state_.currentSongStartedAt(),
        .followsTimecode = state_.autoAdvanceEnabled(),
        .input = timecode.isCapturing() ? std::optional(timecode.capturedInput()) : std::nullopt,
        .displayedShowId = state_.activeDisplayShowId(),
        .windows = places_};
}

void Resumption::keep() {
    if (!leads_) {
        return;
    }
    ResumePoint point = present();
    const Instant now = std::exchange(point.keptAt, kept_ ? kept_->keptAt : point.keptAt);
    if (point != kept_) {
        point.keptAt = now;
        state_.choices().set(key, encodeJson(point));
        kept_ = std::move(point);
    }
}

}  // namespace tessivo
