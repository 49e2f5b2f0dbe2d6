#pragma once

#include "base/Signal.h"
#include "platform/MainQueue.h"
#include "platform/Turns.h"
#include "state/ResumePoint.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tessivo {

class AppState;
class Clock;
struct Platform;

/// Coming back after a crash: keeps beside the record what it takes to go on, from the choice of a
/// mode on, and offers at the next start what the run before left. A clean exit leaves nothing.
/// Only the program that holds the record keeps or offers anything. Main thread only.
class Resumption {
public:
    /// Where it is kept in the preferences store.
    static constexpr std::string_view key = "resume_v1";
    /// How often it is kept anew while nothing changes, in seconds: its age counts.
    static constexpr double refreshInterval = 600.0;

    /// What there is to go on with, French.
    struct Offer {
        bool leads = false;  ///< as the admin; else as a display station
        std::string title;   ///< "Reprendre : Concert d'hiver"
        std::string detail;  ///< "morceau 7, reste 2:13"

        friend bool operator==(const Offer&, const Offer&) = default;
    };

    /// The state outlives this, and what the platform names.
    Resumption(AppState& state, const Platform& platform);
    Resumption(const Resumption&) = delete;
    Resumption& operator=(const Resumption&) = delete;
    /// The clean exit.
    ~Resumption();

    /// As of the last tick of the clock; nothing once a mode was begun. A show that is gone isn't
    /// offered.
    std::optional<Offer> offer() const;

    /// A mode was chosen: what was left is given up, and this evening is kept from here on.
    void begin(bool leads);
    /// The mode was left again.
    void leave();
    /// Gives up what was left.
    void dismiss() { left_.reset(); }
    /// Brings back what `offer` tells of: the show with its countdown, the displayed show and the
    /// capture. Gives the places of the windows, which the screens bring back. What was left stays
    /// kept until `begin` follows: a crash in between costs nothing.
    std::vector<WindowPlace> goOn();

    /// Where a window is shown now.
    void setPlace(WindowPlace place);
    void removePlace(std::string_view window);

private:
    void load();
    void keep();
    void keepSoon();
    ResumePoint present() const;

    AppState& state_;
    const Clock& clock_;
    MainQueue& mainQueue_;
    std::optional<ResumePoint> left_;  ///< by the run before, and neither resumed nor given up
    std::optional<bool> leads_;        ///< in the mode that was begun
    std::vector<WindowPlace> places_;
    std::optional<ResumePoint> kept_;
    std::unique_ptr<MainQueue::Repetition> refreshing_;
    Turns keeping_;
    Subscription stateChanges_;
    Subscription captureChanges_;
};

}  // namespace tessivo
