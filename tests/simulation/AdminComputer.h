#pragma once

#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "sync/AdminBroadcaster.h"
#include "sync/AdminSyncBridge.h"

#include <doctest/doctest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo::test {

/// An admin program between its start and its end.
class AdminProgram {
public:
    explicit AdminProgram(const Platform& platform)
        : state(platform),
          broadcaster(platform.network, platform.mainQueue),
          bridge_(platform.mainQueue) {
        attaching_ = broadcaster.didChange.subscribe([this](AdminBroadcaster::Field) {
            if (is(AdminNetworkStatus::Kind::broadcasting)) {
                bridge_.attach(state, broadcaster);
            }
        });
        broadcaster.startChecking();
    }

    bool is(AdminNetworkStatus::Kind kind) const { return broadcaster.status().kind == kind; }

    /// What it tells at this moment; nothing without an active show.
    std::optional<std::string> told() const {
        const Show* show = state.activeShow();
        return show ? std::optional(encodeJson(
                          LiveState{*show, state.activeSongIndex(), state.currentSongStartedAt()}))
                    : std::nullopt;
    }

    AppState state;
    AdminBroadcaster broadcaster;

private:
    AdminSyncBridge bridge_;
    Subscription attaching_;
};

/// A computer's clock, which somebody sets.
struct SetClock final : Clock {
    explicit SetClock(SimulatedMainQueue& queue) : time(queue) {}
    Instant now() const override { return time.now() + fault; }
    Moment moment() const override { return time.moment(); }

    SimulatedMainQueue& time;
    double fault = 0.0;
};

/// An admin's computer and the program on it, whose preferences outlive it.
class AdminComputer {
public:
    AdminComputer(SimulatedComputer& at, SimulatedMainQueue& time) : computer(at), clock(time) {}

    void start() {
        stop();
        SimulatedMainQueue& time = clock.time;
        program = std::make_unique<AdminProgram>(Platform{
            clock, time, disk_.background, disk_.preferences, disk_.files, disk_.panels,
            disk_.audio, disk_.updates, computer, disk_.stayAwake, disk_.log, disk_.journal});
    }

    /// Ends the program as a crash would, at any moment. What it had must all be kept, but for the
    /// choice of a show.
    void stop() {
        if (!program) {
            return;
        }
        const std::vector<Show> shows = program->state.shows();
        const std::int64_t index = program->state.activeSongIndex();
        program.reset();
        const AppState restored(disk_);
        REQUIRE(restored.shows() == shows);
        REQUIRE(restored.activeSongIndex() == index);
        REQUIRE_FALSE(restored.activeShowId());
    }

    SimulatedComputer& computer;
    SetClock clock;
    std::unique_ptr<AdminProgram> program;

private:
    SimulatedPlatform disk_;
};

}  // namespace tessivo::test
