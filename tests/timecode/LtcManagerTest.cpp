#include "platform/simulated/SimulatedAudioInput.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/AudioLevel.h"
#include "timecode/LtcManager.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using tessivo::LtcManager;
using tessivo::SimulatedAudioInput;
using tessivo::SimulatedMainQueue;
using Field = LtcManager::Field;
using Channels = std::vector<std::vector<float>>;

namespace {

constexpr tessivo::AudioDeviceId stereo = 1, mono = 2, missing = 9;
constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::vector<float> timecode(const std::vector<tessivo::LtcBiphaseDecoder::Frame>& frames) {
    std::string bits;
    for (const auto& frame : frames) {
        bits += tessivo::bitsOfFrame(frame);
    }
    return tessivo::signalOfBits(bits);
}

/// A frame on the first of two channels, a constant on the second.
Channels frameOnFirstOfTwo() {
    const std::vector<float> signal = timecode({{1, 2, 3, 4}});
    return {signal, std::vector<float>(signal.size(), 0.125F)};
}

struct Fixture {
    SimulatedMainQueue queue;
    SimulatedAudioInput audio;
    std::unique_ptr<LtcManager> manager;
    /// What was decoded, in frames, and what was shown at that moment.
    std::vector<std::pair<std::int64_t, std::string>> decoded;

    Fixture() {
        audio.setDevices({{.id = stereo, .name = "Stereo", .format = {48'000.0, 2}},
                          {.id = mono, .name = "Mono", .format = {44'100.0, 1}}});
        manager = std::make_unique<LtcManager>(queue, queue, audio);
        manager->onFrameDecoded = [this](std::int64_t totalFrames, std::int64_t fps) {
            CHECK(fps == 25);
            decoded.emplace_back(totalFrames, manager->currentTimecodeDisplay());
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

    /// The fields in the order of their notifications.
    std::vector<Field> changesDuring(const std::function<void()>& action) {
        std::vector<Field> changes;
        const auto subscription =
            manager->didChange.subscribe([&](Field field) { changes.push_back(field); });
        action();
        return changes;
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a start needs a device that opens, and tells what is wrong") {
    manager->startCapturing();
    CHECK(manager->lastError() == "Choisis d'abord un périphérique d'entrée.");
    CHECK_FALSE(manager->isCapturing());
    CHECK(audio.steps().empty());

    CHECK(changesDuring([&] {
              manager->setAvailableInputDevices(manager->fetchInputDevices());
              manager->setSelectedDeviceId(missing);
              manager->startCapturing();
          }) == std::vector{Field::availableInputDevices, Field::selectedDeviceId, Field::lastError,
                            Field::lastError, Field::isCapturing});
    CHECK(manager->lastError() == "Échec assignation du périphérique (status -9996).");
    CHECK_FALSE(manager->isCapturing());
    CHECK(manager->availableInputDevices().front().name == "Stereo");

    capture(mono);
    CHECK(manager->lastError() == std::nullopt);
    CHECK(audio.openDevice() == mono);
    const std::size_t steps = audio.steps().size();
    CHECK(changesDuring([&] { manager->startCapturing(); }).empty());
    CHECK(audio.steps().size() == steps);
}

TEST_CASE("levels are peaks, wherever they are and whatever is beside them") {
    const std::pair<std::vector<float>, float> rows[] = {{{}, 0.0F},
                                                         {{notANumber}, 0.0F},
                                                         {{notANumber, 0.3F, -notANumber}, 0.3F},
                                                         {{0.1F, -infinity}, infinity}};
    for (const auto& [samples, level] : rows) {
        CHECK(tessivo::peakLevel(samples) == level);
    }
    for (std::size_t position = 0; position < 200; ++position) {
        std::vector<float> samples(200, position % 2 == 0 ? 0.01F : notANumber);
        samples[position] = -1.5F;
        REQUIRE(tessivo::peakLevel(samples) == 1.5F);
    }
}

TEST_CASE_FIXTURE(Fixture, "the selected channel is decoded, or the last there is") {
    struct Row {
        std::int64_t selected;
        float rawLevel;              // 0 stands for what was there before
        std::vector<Field> changes;  // after those that each block makes, the same value or not
    };
    capture(stereo);
    const Row rows[] = {
        {-1, 0.0F, {}},
        {0,
         0.5F,
         {Field::rawAudioLevel, Field::detectedFps, Field::currentTimecodeDisplay,
          Field::signalDetected}},
        {1, 0.125F, {Field::rawAudioLevel, Field::signalDetected}},
        {3, 0.125F, {Field::rawAudioLevel, Field::signalDetected}},
        {std::numeric_limits<std::int64_t>::min(), 0.125F, {}},
    };
    for (const Row& row : rows) {
        CAPTURE(row.selected);
        std::vector<Field> expected = {Field::selectedChannelIndex, Field::buffersReceivedCount,
                                       Field::detectedChannelCount, Field::levelsPerChannel};
        expected.insert(expected.end(), row.changes.begin(), row.changes.end());
        CHECK(changesDuring([&] {
                  manager->setSelectedChannelIndex(row.selected);
                  handle(frameOnFirstOfTwo());
              }) == expected);
        CHECK(manager->levelsPerChannel() == std::vector{0.5F, 0.125F});
        CHECK(manager->rawAudioLevel() == row.rawLevel);
        CHECK(manager->detectedChannelCount() == 2);
        CHECK(manager->selectedChannelIndex() == row.selected);
    }
    CHECK(manager->buffersReceivedCount() == std::ssize(rows));
}

TEST_CASE_FIXTURE(Fixture, "frames are shown and reported in turn, those across blocks too") {
    capture(mono);
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    const std::vector<float> samples = timecode({{1, 2, 3, 4}, {23, 59, 59, 29}});
    const auto cut = samples.begin() + std::ssize(samples) / 4;
    deliver({std::vector(samples.begin(), cut)});
    deliver({std::vector(cut, samples.end())});
    CHECK(manager->buffersReceivedCount() == 0);  // nothing is done on the audio thread
    queue.drain();
    CHECK(manager->buffersReceivedCount() == 2);
    CHECK(decoded == std::vector<std::pair<std::int64_t, std::string>>{{93'079, "01:02:03:04"},
                                                                       {2'160'004, "23:59:59:29"}});

    manager->onFrameDecoded = nullptr;
    handle({timecode({{0, 0, 0, 1}})});
    CHECK(manager->currentTimecodeDisplay() == "00:00:00:01");
}

TEST_CASE_FIXTURE(Fixture, "a signal is lost with the first block two seconds after a frame") {
    capture(mono);
    const Channels silence = {std::vector<float>(64, 0.0F)};
    handle({timecode({{1, 2, 3, 4}})});
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
    CHECK(changesDuring([&] { manager->stopCapturing(); }) ==
          std::vector{Field::isCapturing, Field::signalDetected, Field::currentTimecodeDisplay});
    queue.drain();
    CHECK_FALSE(manager->isCapturing());
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    CHECK(manager->selectedDeviceId() == mono);
    CHECK(manager->rawAudioLevel() == 0.5F);
    CHECK(manager->levelsPerChannel() == std::vector{0.5F});
    CHECK(manager->buffersReceivedCount() == 1);
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
    int frames = 0;
    manager->onFrameDecoded = [&](auto, auto) {
        ++frames;
        manager->stopCapturing();
        if (restarts) {
            capture(stereo);
        }
    };
    deliver({timecode({{1, 2, 3, 4}, {1, 2, 3, 5}})});
    handle({timecode({{1, 2, 3, 6}})});
    CHECK(manager->isCapturing() == restarts);
    CHECK(frames == 1);
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
}

TEST_CASE_FIXTURE(Fixture, "blocks that arrive when the manager is gone are dropped") {
    capture(mono);
    deliver({timecode({{1, 2, 3, 4}})});
    manager.reset();
    queue.drain();
    CHECK(decoded.empty());
    CHECK(audio.steps().back() == SimulatedAudioInput::Step::dispose);
}
