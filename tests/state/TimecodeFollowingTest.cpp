#include "ltc/LtcEncoder.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Random.h"
#include "support/Shows.h"
#include "timecode/LtcManager.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

using namespace tessivo;
using test::Random;

namespace {

constexpr std::size_t blockFrames = 480;

/// A show that follows the timecode of a simulated input, in real time.
struct Fixture {
    SimulatedPlatform computer;
    std::unique_ptr<AppState> state;

    Fixture() {
        computer.audio.setDevices(
            {{1, "Interface 8", {48'000.0, 2}}, {2, "Interface 2", {48'000.0, 2}}});
        start();
    }

    /// Starts the program anew on the same computer.
    void start() {
        state.reset();
        state = std::make_unique<AppState>(computer);
        state->ltcManager().fetchInputDevices();
        computer.time.drain();
    }
    void capture() {
        state->ltcManager().setSelectedDeviceId(1);
        state->ltcManager().startCapturing();
        computer.time.drain();
    }
    void openShow(const std::vector<std::string>& starts) {
        Show show = showWithSongs(starts.size() + 1);
        for (std::size_t i = 0; i < starts.size(); ++i) {
            show.songs[i + 1].ltcTimecode = starts[i];
            show.songs[i + 1].duration = 60;
        }
        state->importShow(std::move(show));
    }
    void hear(const std::vector<float>& signal, std::size_t channel = 0) {
        for (std::size_t i = 0; i + blockFrames <= signal.size(); i += blockFrames) {
            std::vector<std::vector<float>> channels(2, std::vector<float>(blockFrames));
            const auto from = signal.begin() + static_cast<long>(i);
            channels[channel].assign(from, from + blockFrames);
            REQUIRE(computer.audio.deliver(channels));
            computer.time.advance(blockFrames / 48'000.0);
        }
    }
    std::vector<float> timecode(const char* rateName, ltc::Timecode at, int frames) const {
        const ltc::FrameRate rate = ltc::parseFrameRate(rateName).value();
        ltc::LtcEncoder encoder(rate, 48'000);
        std::vector<float> signal;
        for (int i = 0; i < frames; ++i, at = next(at, rate)) {
            encoder.appendFrame(at, signal);
        }
        encoder.appendClosingCell(signal);
        signal.resize(signal.size() + blockFrames, signal.back());
        return signal;
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture,
                  "counted in 30, songs start with their own frame at every rate, either way") {
    struct Row {
        const char* rate;
        ltc::Timecode from;  ///< 30 frames before the start
        const char* start;
        const char* movedAtUsually;
        const char* movedAtCounting;
    };
    const Row rows[] = {
        {"24", {9, 59, 58, 18}, "10:00:00:00", "10:00:00:00", "10:00:00:00"},
        {"25", {9, 59, 58, 22}, "10:00:00:02", "10:00:00:02", "10:00:00:02"},
        {"29.97ndf", {10, 0, 4, 0}, "10:00:05:00", "10:00:04:25", "10:00:05:00"},
        {"29.97df", {10, 0, 59, 0}, "10:01:00:02", "10:00:59:27", "10:01:00:02"},
        {"29.97df", {10, 0, 59, 0}, "10;01;00;00", "", "10:01:00:02"},
        {"30", {10, 0, 4, 0}, "10:00:05:00", "10:00:04:25", "10:00:05:00"},
        {"30", {10, 0, 4, 15}, "10:00:05:15", "10:00:05:15", "10:00:05:15"},
    };
    capture();
    for (const Row& row : rows) {
        for (const bool counts : {false, true}) {
            for (const auto following :
                 {AppState::Following::atStarts, AppState::Following::byPosition}) {
                CAPTURE(row.rate);
                CAPTURE(row.start);
                CAPTURE(counts);
                CAPTURE(following);
                openShow({row.start});
                state->setFollowing(following);
                state->ltcManager().setCountsThirty(counts);
                std::string movedAt;
                const Subscription watching =
                    state->didChange.subscribe([&](AppState::Field field) {
                        if (field == AppState::Field::activeSongIndex) {
                            movedAt = state->ltcManager().currentTimecodeDisplay();
                        }
                    });
                hear(timecode(row.rate, row.from, 50));
                CHECK(movedAt == (counts ? row.movedAtCounting : row.movedAtUsually));
            }
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "by position, the song that is played is found wherever it is joined") {
    capture();
    openShow({"00:10:00:00", "00:11:00:00", "00:13:00:00"});
    state->setFollowing(AppState::Following::byPosition);
    struct Row {
        ltc::Timecode at;
        void (*before)(AppState&);
        std::int64_t cursor;
        std::int64_t remaining;  ///< after one more second of it
    };
    const auto nothing = [](AppState&) {};
    const Row rows[] = {
        {{0, 9, 59, 0}, nothing, 0, -1},
        {{0, 10, 20, 0}, nothing, 1, 39},
        {{0, 10, 40, 0}, nothing, 1, 19},                           // located within the song
        {{0, 11, 30, 0}, nothing, 2, 29},                           // its start fell into a gap
        {{0, 11, 40, 0}, [](AppState& s) { s.goNext(); }, 3, 59},   // hands win…
        {{0, 12, 30, 0}, nothing, 3, 58},                           // …between songs, too
        {{0, 13, 5, 0}, [](AppState& s) { s.goNext(); }, 3, 54},    // …until the next start
        {{0, 13, 10, 0}, [](AppState& s) { s.jumpTo(3); }, 3, 59},  // begun anew by hand
        {{0, 13, 20, 0},
         [](AppState& s) {
             s.goNext();
             s.setFollowing(AppState::Following::byPosition);  // asked for again
         },
         3,
         39},
        {{0, 10, 20, 0}, [](AppState& s) { s.goPrev(); }, 2, 59},  // held off for 15 seconds
    };
    for (const Row& row : rows) {
        CAPTURE(&row - rows);
        row.before(*state);
        hear(timecode("25", row.at, 25));
        CHECK(state->activeSongIndex() == row.cursor);
        const auto remaining = state->currentSongRemainingSeconds().value_or(-1);
        CHECK(std::abs(remaining - row.remaining) <= 1);
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "carefully, the songs asked for start at each rate on each usable line") {
    using Disturb = void (*)(std::vector<float> & signal, Random & random);
    struct Line {
        const char* name;
        Disturb disturb;
    };
    const Disturb addNoise = [](std::vector<float>& signal, Random& random) {
        for (float& sample : signal) {
            sample += 0.003F * random.gaussian();
        }
    };
    const Line lines[] = {
        {"clean", [](std::vector<float>&, Random&) {}},
        {"noise floor", addNoise},
        {"a fifth of a second lost",
         [](std::vector<float>& signal, Random&) {
             std::fill_n(signal.begin() + 24'000, 9'600, 0.0F);
         }},
        {"slow edges, offset and hum",
         [](std::vector<float>& signal, Random&) {
             float passed = 0.0F;
             for (std::size_t i = 0; i < signal.size(); ++i) {
                 passed += 0.4F * (signal[i] - passed);
                 signal[i] = passed + 0.4F + 0.4F * std::sin(static_cast<float>(i % 960) / 152.8F);
             }
         }},
    };
    const ltc::Timecode starts[] = {{10, 0}, {10, 2}, {10, 10}, {0, 0}};
    std::vector<std::string> texts;
    std::ranges::transform(starts, std::back_inserter(texts), ltc::toText);
    const std::vector<std::int64_t> asked = {3, 1, 4, 2, 1, 3, 4};
    Random random(3);
    capture();
    state->ltcManager().setCareful(true);
    std::vector<std::int64_t> moves;
    const Subscription watching = state->didChange.subscribe([&](AppState::Field field) {
        if (field == AppState::Field::activeSongIndex) {
            moves.push_back(state->activeSongIndex());
        }
    });
    for (const char* rateName : {"24", "25", "29.97df", "29.97ndf", "30"}) {
        const ltc::FrameRate rate = ltc::parseFrameRate(rateName).value();
        for (const Line& line : lines) {
            for (const bool byPosition : {false, true}) {
                CAPTURE(rateName);
                CAPTURE(line.name);
                CAPTURE(byPosition);
                openShow(texts);
                state->setFollowing(byPosition ? AppState::Following::byPosition
                                               : AppState::Following::atStarts);
                state->ltcManager().setCountsThirty(byPosition);
                moves.clear();
                for (std::size_t i = 0; i < asked.size(); ++i) {
                    // Playback that begins just before the start, or right on it.
                    ltc::Timecode at = starts[asked[i] - 1];
                    if (i % 2 == 0) {
                        at = {(at.hours + (at.minutes == 0 ? 23 : 0)) % 24, (at.minutes + 59) % 60,
                              59, rate.counted - 7};
                    } else if (rate.dropFrame && at.minutes % 10 != 0) {
                        at.frames = 2;
                    }
                    std::vector<float> signal(14'400 + random.below(500));
                    const std::vector<float> played = timecode(rateName, at, 30);
                    signal.insert(signal.end(), played.begin(), played.end());
                    line.disturb(signal, random);
                    hear(signal);
                }
                CHECK(moves == asked);
            }
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "a move that nothing confirms is told; carefully, it isn't made") {
    capture();
    openShow({"00:10:00:00"});
    for (const bool careful : {false, true}) {
        state->ltcManager().setCareful(careful);
        state->jumpTo(2);
        hear(timecode("25", {0, 10, 0, 0}, 2));  // one of two frames is read
        hear(timecode("25", {0, 20, 0, 0}, 75));
        CHECK(state->activeSongIndex() == (careful ? 2 : 1));
        CHECK(state->hasMovedUnconfirmed() == !careful);
        state->ltcManager().stopCapturing();
        capture();
        CHECK_FALSE(state->hasMovedUnconfirmed());
        hear(timecode("25", {0, 10, 0, 0}, 12));
        CHECK(state->activeSongIndex() == 1);
        hear(std::vector<float>(3 * 48'000));
        CHECK_FALSE(state->hasMovedUnconfirmed());
    }
    state->ltcManager().setCareful(false);
    for (int k = 0; k < 100; ++k) {  // wherever the second ends that it is judged at
        state->jumpTo(2);
        hear(timecode("25", {0, 10, 0, 0}, 13));
        CHECK(state->activeSongIndex() == 1);
        CHECK_FALSE(state->hasMovedUnconfirmed());
    }
}

TEST_CASE_FIXTURE(Fixture, "timecode that runs backwards is told, and moves nothing") {
    using Motion = TimecodeHealth::Motion;
    capture();
    openShow({"00:10:00:00"});
    for (const char* rate : {"24", "25", "29.97df", "29.97ndf", "30"}) {
        for (const std::size_t speed : {1U, 3U}) {
            CAPTURE(rate);
            CAPTURE(speed);
            std::vector<float> signal = timecode(rate, {0, 9, 59, 0}, 100);
            std::ranges::reverse(signal);
            for (std::size_t i = 0; i < signal.size() / speed; ++i) {
                signal[i] = signal[i * speed];
            }
            signal.resize(signal.size() / speed);
            hear(signal);
            CHECK(state->ltcManager().health().motion == Motion::backwards);
            CHECK(state->ltcManager().health().advice == LineAdvice::none);
            CHECK(state->activeSongIndex() == 0);
            hear(timecode(rate, {0, 20, 0, 0}, 12));
            CHECK(state->ltcManager().health().motion == Motion::running);
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "timecode is found on another channel, and what was chosen is kept") {
    capture();
    LtcManager* manager = &state->ltcManager();
    hear(timecode("25", {1, 0, 0, 0}, 25), 1);
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    REQUIRE(manager->channelWithTimecode() == 1);
    manager->setSelectedChannelIndex(1);
    hear(timecode("25", {1, 0, 2, 0}, 25), 1);
    CHECK(manager->channelWithTimecode() == std::nullopt);
    CHECK(manager->signalDetected());
    hear(timecode("25", {1, 0, 4, 0}, 25), 0);  // one second without it isn't enough to look
    CHECK(manager->channelWithTimecode() == std::nullopt);
    hear(timecode("25", {1, 0, 5, 0}, 75), 0);
    CHECK(manager->channelWithTimecode() == 0);
    manager->setCareful(true);
    manager->setCountsThirty(true);
    state->setFollowing(AppState::Following::byPosition);

    start();
    manager = &state->ltcManager();
    CHECK(manager->isCareful());
    CHECK(manager->countsThirty());
    CHECK(state->following() == AppState::Following::byPosition);
    CHECK(manager->selectedChannelIndex() == 0);
    for (const AudioDeviceId device : {1U, 2U, 1U}) {
        manager->setSelectedDeviceId(device);
        CHECK(manager->selectedChannelIndex() == (device == 1 ? 1 : 0));
    }
}
