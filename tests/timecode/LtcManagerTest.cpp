#include "platform/simulated/SimulatedAudioInput.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/AudioLevel.h"
#include "timecode/LtcManager.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using tessivo::bitsOfFrame;
using tessivo::LtcManager;
using tessivo::SimulatedAudioInput;
using tessivo::SimulatedMainQueue;
using Field = LtcManager::Field;
using Channels = std::vector<std::vector<float>>;

namespace {

constexpr tessivo::AudioDeviceId stereo = 1, mono = 2, missing = 9;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Timecode of these frames: an even number of edges after a seeding one.
std::vector<float> timecode(const std::vector<tessivo::LtcBiphaseDecoder::Frame>& frames) {
    std::vector<float> samples;
    tessivo::appendIntervals(samples, std::vector<int>{20, 20, 20});
    for (const auto& frame : frames) {
        tessivo::appendIntervals(samples, tessivo::intervalsOfBits(bitsOfFrame(frame), 20));
    }
    tessivo::appendIntervals(samples, std::vector<int>{20});
    return samples;
}

struct Fixture {
    SimulatedMainQueue queue;
    SimulatedAudioInput audio;
    std::unique_ptr<LtcManager> manager;
    std::vector<std::pair<std::int64_t, std::int64_t>> decoded;

    Fixture() {
        audio.setDevices({{.id = stereo, .name = "Stereo", .format = {48'000.0, 2}},
                          {.id = mono, .name = "Mono", .format = {44'100.0, 1}}});
        manager = std::make_unique<LtcManager>(queue, queue, audio);
        manager->onFrameDecoded = [this](std::int64_t totalFrames, std::int64_t fps) {
            decoded.emplace_back(totalFrames, fps);
        };
    }

    void capture(tessivo::AudioDeviceId device) {
        manager->setSelectedDeviceId(device);
        manager->startCapturing();
        REQUIRE(manager->isCapturing());
    }

    void deliver(const Channels& channels) { REQUIRE(audio.deliver(channels) == 0); }
    void handle(const Channels& channels) {
        deliver(channels);
        queue.drain();
    }
};

/// The fields in the order of their notifications.
std::vector<Field> changesDuring(LtcManager& manager, const std::function<void()>& action) {
    std::vector<Field> changes;
    const auto subscription =
        manager.didChange.subscribe([&](Field field) { changes.push_back(field); });
    action();
    return changes;
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a start needs a device that opens, and tells what is wrong") {
    manager->startCapturing();
    CHECK(manager->lastError() == "Choisis d'abord un périphérique d'entrée.");
    CHECK_FALSE(manager->isCapturing());
    CHECK(audio.steps().empty());

    manager->setSelectedDeviceId(missing);
    const auto changes = changesDuring(*manager, [&] { manager->startCapturing(); });
    CHECK(changes == std::vector{Field::lastError, Field::lastError, Field::isCapturing});
    CHECK(manager->lastError() == "Échec assignation du périphérique (status -9996).");
    CHECK_FALSE(manager->isCapturing());

    manager->setSelectedDeviceId(mono);
    manager->startCapturing();
    CHECK(manager->lastError() == std::nullopt);
    CHECK(manager->isCapturing());
    CHECK(audio.openDevice() == mono);
    const std::size_t steps = audio.steps().size();
    CHECK(changesDuring(*manager, [&] { manager->startCapturing(); }).empty());
    CHECK(audio.steps().size() == steps);
}

TEST_CASE_FIXTURE(Fixture, "each assignment is told, also when the value stays the same") {
    CHECK(changesDuring(*manager,
                        [&] {
                            manager->setSelectedDeviceId(std::nullopt);
                            manager->setAvailableInputDevices({});
                            manager->setSelectedChannelIndex(0);
                        }) == std::vector{Field::selectedDeviceId, Field::availableInputDevices,
                                          Field::selectedChannelIndex});
    capture(stereo);
    Channels block = {timecode({{1, 2, 3, 4}}), {}};
    block[1].resize(block[0].size());
    for (int round = 0; round < 2; ++round) {
        CHECK(changesDuring(*manager, [&] { handle(block); }) ==
              std::vector{Field::buffersReceivedCount, Field::detectedChannelCount,
                          Field::levelsPerChannel, Field::rawAudioLevel, Field::detectedFps,
                          Field::currentTimecodeDisplay, Field::signalDetected});
    }
    CHECK(changesDuring(*manager, [&] { manager->stopCapturing(); }) ==
          std::vector{Field::isCapturing, Field::signalDetected, Field::currentTimecodeDisplay});
}

TEST_CASE("levels are peaks, wherever they are and whatever is beside them") {
    struct Row {
        std::vector<float> samples;
        float level;
    };
    std::vector<float> early(1000, notANumber);
    early[3] = -0.25F;
    for (const Row& row : {Row{{}, 0.0F}, Row{{-0.0F}, 0.0F}, Row{{notANumber}, 0.0F},
                           Row{{notANumber, 0.3F, -notANumber}, 0.3F},
                           Row{{0.1F, -infinity}, infinity}, Row{early, 0.25F}}) {
        CHECK(tessivo::peakLevel(row.samples) == row.level);
    }
    for (std::size_t position = 0; position < 200; ++position) {
        std::vector<float> samples(200, 0.01F);
        samples[position] = -1.5F;
        REQUIRE(tessivo::peakLevel(samples) == 1.5F);
    }
}

TEST_CASE_FIXTURE(Fixture, "the selected channel is decoded, or the last there is") {
    struct Row {
        std::int64_t selected;
        float rawLevel;  // 0 stands for what was there before
        std::size_t frames;
    };
    capture(stereo);
    Channels block = {timecode({{1, 2, 3, 4}}), {}};
    block[1].assign(block[0].size(), 0.125F);
    for (const Row& row : {Row{-1, 0.0F, 0}, Row{0, 0.5F, 1}, Row{1, 0.125F, 0}, Row{3, 0.125F, 0},
                           Row{std::numeric_limits<std::int64_t>::min(), 0.125F, 0}}) {
        CAPTURE(row.selected);
        decoded.clear();
        const auto received = manager->buffersReceivedCount();
        manager->setSelectedChannelIndex(row.selected);
        handle(block);
        CHECK(manager->levelsPerChannel() == std::vector{0.5F, 0.125F});
        CHECK(manager->rawAudioLevel() == row.rawLevel);
        CHECK(manager->detectedChannelCount() == 2);
        CHECK(manager->buffersReceivedCount() == received + 1);
        CHECK(manager->selectedChannelIndex() == row.selected);
        CHECK(decoded.size() == row.frames);
    }
}

TEST_CASE_FIXTURE(Fixture, "each frame is shown and reported before the next sample is taken") {
    capture(mono);
    std::vector<std::string> shown;
    manager->onFrameDecoded = [&](std::int64_t totalFrames, std::int64_t fps) {
        decoded.emplace_back(totalFrames, fps);
        shown.push_back(manager->currentTimecodeDisplay());
    };
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    handle({timecode({{1, 2, 3, 4}, {23, 59, 59, 29}})});
    CHECK(shown == std::vector<std::string>{"01:02:03:04", "23:59:59:29"});
    CHECK(decoded ==
          std::vector<std::pair<std::int64_t, std::int64_t>>{{93'079, 25}, {2'160'004, 25}});
    CHECK(manager->detectedFps() == 25);

    manager->onFrameDecoded = nullptr;
    handle({timecode({{0, 0, 0, 1}})});
    CHECK(manager->currentTimecodeDisplay() == "00:00:00:01");
}

TEST_CASE_FIXTURE(Fixture, "a frame may lie across blocks, each handled in its own turn") {
    capture(mono);
    const std::vector<float> samples = timecode({{10, 0, 0, 0}});
    const auto middle = samples.begin() + std::ssize(samples) / 2;
    deliver({std::vector(samples.begin(), middle)});
    deliver({std::vector(middle, samples.end())});
    CHECK(manager->buffersReceivedCount() == 0);
    queue.drain();
    CHECK(manager->buffersReceivedCount() == 2);
    CHECK(manager->currentTimecodeDisplay() == "10:00:00:00");
}

TEST_CASE_FIXTURE(Fixture, "a signal is lost with the first block two seconds after a frame") {
    capture(mono);
    const Channels silence = {std::vector<float>(64, 0.0F)};
    CHECK_FALSE(manager->signalDetected());
    handle({timecode({{1, 2, 3, 4}})});
    CHECK(manager->signalDetected());
    queue.advance(1.99);
    handle(silence);
    CHECK(manager->signalDetected());
    queue.advance(0.01);
    CHECK(manager->signalDetected());
    handle(silence);
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "01:02:03:04");
}

TEST_CASE_FIXTURE(Fixture, "a stop clears what is shown, keeps the figures and drops late blocks") {
    capture(mono);
    handle({timecode({{1, 2, 3, 4}})});
    deliver({timecode({{1, 2, 3, 5}})});
    manager->stopCapturing();
    queue.drain();
    CHECK_FALSE(manager->isCapturing());
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    CHECK(manager->selectedDeviceId() == mono);
    CHECK(manager->rawAudioLevel() == 0.5F);
    CHECK(manager->levelsPerChannel() == std::vector{0.5F});
    CHECK(manager->buffersReceivedCount() == 1);
    CHECK(decoded.size() == 1);
    CHECK_FALSE(audio.isRunning());

    // Blocks of one device never reach the capture of the next.
    manager->startCapturing();
    deliver({timecode({{1, 2, 3, 6}})});
    manager->stopCapturing();
    capture(stereo);
    handle(Channels(2, std::vector<float>(10, 0.25F)));
    CHECK(manager->buffersReceivedCount() == 2);
    CHECK(manager->levelsPerChannel() == std::vector{0.25F, 0.25F});
    CHECK(decoded.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a frame may stop or restart the capture that it came from") {
    capture(mono);
    bool restarts = false;
    SUBCASE("stop") {}
    SUBCASE("restart on another device") {
        restarts = true;
    }
    manager->onFrameDecoded = [&](auto totalFrames, auto fps) {
        decoded.emplace_back(totalFrames, fps);
        manager->stopCapturing();
        if (restarts) {
            manager->setSelectedDeviceId(stereo);
            manager->startCapturing();
        }
    };
    deliver({timecode({{1, 2, 3, 4}, {1, 2, 3, 5}})});
    deliver({timecode({{1, 2, 3, 6}})});
    queue.drain();
    CHECK(manager->isCapturing() == restarts);
    CHECK(decoded.size() == 1);
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
}

TEST_CASE_FIXTURE(Fixture, "blocks that nobody could handle are dropped and counted") {
    capture(mono);
    const Channels block = {std::vector<float>(4096)};
    for (int i = 0; i < 100; ++i) {
        deliver(block);
    }
    queue.drain();
    const auto dropped = static_cast<std::int64_t>(manager->droppedBlockCount());
    CHECK(dropped > 0);
    handle(block);
    CHECK(manager->buffersReceivedCount() == 101 - dropped);
}

TEST_CASE_FIXTURE(Fixture, "blocks that arrive when the manager is gone are dropped") {
    capture(mono);
    deliver({timecode({{1, 2, 3, 4}})});
    manager.reset();
    queue.drain();
    CHECK(decoded.empty());
    CHECK(audio.steps().back() == SimulatedAudioInput::Step::dispose);
}

namespace {

/// A main thread that another thread can give work to: only triggers, which count their firings.
class CountingQueue final : public tessivo::MainQueue {
public:
    void post(Task) override {}
    void postAfter(double, Task) override {}
    std::unique_ptr<Repetition> repeatEvery(double, Task) override { return nullptr; }
    std::unique_ptr<RealtimeTrigger> makeRealtimeTrigger(Task task) override {
        task_ = std::move(task);
        return std::make_unique<Trigger>(fired_);
    }

    /// Runs the trigger as often as it was fired since the last time.
    void runPending() {
        for (auto due = fired_.exchange(0); due > 0; --due) {
            task_();
        }
    }

private:
    class Trigger final : public RealtimeTrigger {
    public:
        explicit Trigger(std::atomic<int>& fired) : fired_(fired) {}
        void fire() noexcept override { ++fired_; }

    private:
        std::atomic<int>& fired_;
    };

    std::atomic<int> fired_ = 0;
    Task task_;
};

}  // namespace

TEST_CASE("twenty changes of device while an audio thread delivers blocks") {
    const SimulatedMainQueue clock;
    CountingQueue queue;
    SimulatedAudioInput audio;
    audio.setDevices({{.id = 1, .name = "A", .format = {48'000.0, 2}},
                      {.id = 2, .name = "B", .format = {96'000.0, 2}}});
    LtcManager manager(clock, queue, audio);
    const std::vector<float> signal = timecode({{1, 2, 3, 4}});
    const Channels block = {signal, std::vector<float>(signal.size(), 0.25F)};
    std::atomic<bool> ended = false;
    std::thread audioThread([&] {
        while (!ended) {
            audio.deliver(block);
            std::this_thread::yield();
        }
    });
    for (std::uint32_t change = 0; change < 20; ++change) {
        manager.stopCapturing();
        manager.setSelectedDeviceId(change % 2 + 1);
        manager.startCapturing();
        CHECK(manager.isCapturing());
        const std::int64_t before = manager.buffersReceivedCount();
        while (manager.buffersReceivedCount() < before + 5) {
            queue.runPending();
            std::this_thread::yield();
        }
        CHECK(manager.currentTimecodeDisplay() == "01:02:03:04");
        CHECK(manager.levelsPerChannel() == std::vector{0.5F, 0.25F});
    }
    manager.stopCapturing();
    const std::int64_t handled = manager.buffersReceivedCount();
    queue.runPending();
    CHECK(manager.buffersReceivedCount() == handled);
    ended = true;
    audioThread.join();
}
