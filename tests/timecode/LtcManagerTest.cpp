#include "platform/simulated/SimulatedAudioInput.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "timecode/AudioLevel.h"
#include "timecode/LtcManager.h"
#include "timecode/LtcSignal.h"

#include <doctest/doctest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace tessivo;
using Channels = std::vector<std::vector<float>>;

namespace {

constexpr AudioDeviceId stereo = 1, mono = 2, mute = 3, missing = 9;
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::vector<float> timecode(const std::vector<LtcBiphaseDecoder::Frame>& frames) {
    std::string bits;
    for (const auto& frame : frames) {
        bits += bitsOfFrame(frame);
    }
    return signalOfBits(bits);
}

struct Fixture {
    SimulatedMainQueue queue;
    SimulatedAudioInput audio{queue};
    std::ostringstream log;
    std::unique_ptr<LtcManager> manager = std::make_unique<LtcManager>(queue, queue, audio, log);
    /// What was decoded, in frames, and what was shown at that moment.
    std::vector<std::pair<std::int64_t, std::string>> decoded;

    Fixture() {
        audio.setDevices({{stereo, "Stereo", {48'000.0, 2}},
                          {mono, "Mono", {44'100.0, 1}},
                          {mute, "Muet", {48'000.0, 0}}});
        manager->onFrameDecoded = [this](std::int64_t totalFrames, std::int64_t) {
            decoded.emplace_back(totalFrames, manager->currentTimecodeDisplay());
        };
    }

    void capture(AudioDeviceId device) {
        manager->setSelectedDeviceId(device);
        manager->startCapturing();
        REQUIRE(manager->isCapturing());
    }
    void captureOpen(AudioDeviceId device) {
        capture(device);
        queue.drain();
        REQUIRE(audio.openDevice() == device);
    }
    void deliver(const Channels& channels) { REQUIRE(audio.deliver(channels)); }
    void handle(const Channels& channels) {
        deliver(channels);
        queue.drain();
    }
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "a start that fails says at which step, and leaves nothing in the way") {
    using enum AudioStep;
    struct Row {
        std::optional<AudioDeviceId> device;
        std::optional<AudioFailure> failure;
        const char* sentence;
    };
    const Row rows[] = {
        {{}, {}, "Choisis d'abord un périphérique d'entrée."},
        {missing, {}, "Échec assignation du périphérique (status -9996)."},
        {mute, {}, "Le périphérique signale 0 canal."},
        {mono, {{findSystem, 0}}, "Impossible de trouver le composant AUHAL."},
        {mono, {{createUnit, 0}}, "Échec de création de l'AUHAL (status 0)."},
        {mono, {{enableInput, 1}}, "Échec activation entrée (status 1)."},
        {mono, {{disableOutput, -1}}, "Échec désactivation sortie (status -1)."},
        {mono, {{selectDevice, -1}}, "Échec assignation du périphérique (status -1)."},
        {mono, {{readFormat, -16}}, "Échec lecture du format (status -16)."},
        {mono, {{setFormat, -1}}, "Échec configuration format client (status -1)."},
        {mono, {{setCallback, -1}}, "Échec configuration du callback (status -1)."},
        {mono, {{initialize, -1}}, "Échec AudioUnitInitialize (status -1)."},
        {mono, {{start, INT32_MIN}}, "Échec démarrage AUHAL (status -2147483648)."},
    };
    for (const Row& row : rows) {
        CAPTURE(row.sentence);
        manager->setSelectedDeviceId(row.device);
        audio.setFailure(row.failure);
        manager->startCapturing();
        queue.drain();
        CHECK(manager->lastError() == row.sentence);
        CHECK_FALSE(manager->isCapturing());

        audio.setFailure({});
        capture(stereo);
        CHECK(manager->lastError() == std::nullopt);
        capture(mono);  // changes nothing while capturing
        queue.drain();
        CHECK(audio.openDevice() == stereo);
        manager->stopCapturing();
        CHECK(audio.openDevice() == std::nullopt);
    }
}

TEST_CASE_FIXTURE(Fixture, "devices are looked for once at a time, and kept when unreadable") {
    manager->fetchInputDevices();
    manager->fetchInputDevices();
    CHECK(audio.fetches() == 1);
    CHECK(manager->isFetchingInputDevices());
    CHECK(manager->availableInputDevices().empty());
    for (const char* logged : {"", "Audio: entrées illisibles, la liste d'avant est gardée\n"}) {
        queue.drain();
        CHECK_FALSE(manager->isFetchingInputDevices());
        CHECK(manager->availableInputDevices().size() == 3);
        CHECK(manager->availableInputDevices().front() == AudioInputDevice{stereo, "Stereo"});
        CHECK(log.str() == logged);
        CHECK(manager->lastError().has_value() == !log.str().empty());
        audio.setUnreadable();
        manager->fetchInputDevices();
    }
    queue.drain();
    audio.setDevices({});
    audio.setUnreadable(false);
    manager->fetchInputDevices();
    queue.drain();
    CHECK(manager->availableInputDevices().empty());
    CHECK(manager->lastError() == std::nullopt);
}

TEST_CASE_FIXTURE(Fixture, "what one capture confirmed confirms nothing in the next") {
    int confirmed = 0;
    manager->onFrameConfirmed = [&](std::int64_t, std::int64_t) { ++confirmed; };
    for (const std::int64_t frame : {1, 3, 5}) {
        captureOpen(mono);
        handle({timecode({{10, 0, 0, frame}, {10, 0, 0, frame + 1}})});
        manager->stopCapturing();
        CHECK(std::exchange(confirmed, 0) == 1);
        CHECK(manager->health().came == 1);
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "what a faulty driver gives besides numbers doesn't stay in the filter") {
    manager->setCareful(true);
    captureOpen(mono);
    handle({{notANumber}});
    handle({timecode({{1, 2, 3, 4}, {1, 2, 3, 5}})});
    CHECK(decoded.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "lost audio is told at once, and each burst is logged once") {
    const Channels tenth(1, std::vector<float>(4410));
    const auto lose = [&](std::uint64_t blocks) {
        REQUIRE(audio.deliver(tenth, {blocks, blocks * 4410}));
        queue.drain();
    };
    captureOpen(mono);
    handle(tenth);
    CHECK_FALSE(manager->hasLostAudio());
    std::string told;
    for (const char* burst : {"34 (3400 ms)", "17 (1700 ms)"}) {
        lose(17);
        if (told.empty()) {
            lose(17);
        }
        CHECK(manager->hasLostAudio());
        queue.advance(0.9);
        handle(tenth);
        CHECK(log.str() == told);
        told += "Audio: l'ordinateur n'a pas suivi, blocs perdus: " + std::string(burst) + '\n';
        queue.advance(0.1);
        handle(tenth);
        CHECK(log.str() == told);
    }
    lose(1);
    manager->stopCapturing();
    CHECK(log.str().size() > told.size());
    CHECK(manager->hasLostAudio());
    capture(mono);
    CHECK_FALSE(manager->hasLostAudio());
}

TEST_CASE_FIXTURE(Fixture, "an input that dies is told within two seconds, and captured again") {
    manager->fetchInputDevices();
    queue.drain();
    enum Death { silence, end };
    for (const Death death : {silence, end}) {
        CAPTURE(death);
        captureOpen(mono);
        queue.advance(2.9);  // the first sound of a server's idle output
        CHECK(manager->lastError() == std::nullopt);
        handle({timecode({{1, 2, 3, 3}, {1, 2, 3, 4}})});
        REQUIRE(manager->signalDetected());
        REQUIRE(manager->health().came == 1);
        const auto devices = audio.devices();
        audio.setDevices({});
        if (death == end) {
            audio.endCapture();
            queue.drain();
        } else {
            queue.advance(1.0);
            CHECK(manager->signalDetected());
            queue.advance(0.5);
        }
        CHECK(manager->lastError() == "Plus de son reçu de « Mono ».");
        CHECK_FALSE(manager->signalDetected());
        CHECK(manager->currentTimecodeDisplay() == "01:02:03:04");
        CHECK(manager->health().came == 0);
        CHECK(manager->rawAudioLevel() == 0.0F);
        CHECK(manager->levelsPerChannel() == std::vector{0.0F});
        queue.advance(10.0);
        CHECK(manager->isCapturing());
        CHECK(manager->lastError() == "Plus de son reçu de « Mono ».");

        audio.setDevices(devices);
        queue.advance(1.0);
        handle({timecode({{1, 2, 3, 5}, {1, 2, 3, 6}})});
        CHECK(manager->lastError() == std::nullopt);
        CHECK(manager->signalDetected());

        queue.advance(2.0);
        REQUIRE(manager->lastError().has_value());
        manager->stopCapturing();
        queue.advance(10.0);  // the operator's stop holds
        CHECK(audio.openDevice() == std::nullopt);
    }
}

TEST_CASE("a level is the peak, wherever it is and whatever is beside it") {
    CHECK(peakLevel({}) == 0.0F);
    CHECK(peakLevel(std::vector{notANumber}) == 0.0F);
    for (std::size_t position = 0; position < 200; ++position) {
        std::vector<float> samples(200, position % 2 == 0 ? 0.01F : notANumber);
        samples[position] = -1.5F;
        REQUIRE(peakLevel(samples) == 1.5F);
    }
}

TEST_CASE_FIXTURE(Fixture, "the selected channel is decoded, or the last there is") {
    struct Row {
        std::int64_t selected;
        float rawLevel;
        std::size_t decoded;
    };
    const Row rows[] = {{-1, 0.0F, 0},
                        {0, 0.5F, 1},
                        {3, 0.125F, 1},
                        {std::numeric_limits<std::int64_t>::min(), 0.125F, 1}};
    captureOpen(stereo);
    for (const Row& row : rows) {
        CAPTURE(row.selected);
        manager->setSelectedChannelIndex(row.selected);
        const std::vector<float> signal = timecode({{1, 2, 3, 4}});
        handle({signal, std::vector<float>(signal.size(), 0.125F)});
        CHECK(manager->levelsPerChannel() == std::vector{0.5F, 0.125F});
        CHECK(manager->rawAudioLevel() == row.rawLevel);
        CHECK(manager->selectedChannelIndex() == row.selected);
        CHECK(decoded.size() == row.decoded);
    }
    handle(Channels(2));
    CHECK(manager->levelsPerChannel() == std::vector{0.0F, 0.0F});
}

TEST_CASE_FIXTURE(Fixture, "frames are shown and reported in turn, those across blocks too") {
    captureOpen(mono);
    const std::vector<float> samples = timecode({{1, 2, 3, 4}, {23, 59, 59, 29}});
    const auto cut = samples.begin() + std::ssize(samples) / 4;
    deliver({std::vector(samples.begin(), cut)});
    deliver({std::vector(cut, samples.end())});
    CHECK(manager->buffersReceivedCount() == 0);  // nothing is done on the audio thread
    queue.drain();
    CHECK(manager->buffersReceivedCount() == 2);
    CHECK(decoded == std::vector<std::pair<std::int64_t, std::string>>{{93'079, "01:02:03:04"},
                                                                       {2'160'004, "23:59:59:29"}});
}

TEST_CASE_FIXTURE(
    Fixture,
    "a signal is lost with the first block two seconds after a frame, by no clock that is set") {
    captureOpen(mono);
    handle({timecode({{1, 2, 3, 4}})});
    queue.advance(1.0);
    handle({std::vector<float>(64)});
    for (const bool isPresent : {true, false}) {
        queue.advance(isPresent ? 0.99 : 0.01);
        queue.setWallClock({isPresent ? 1e9 : 0.0});
        CHECK(manager->signalDetected());
        handle({std::vector<float>(64)});
        CHECK(manager->signalDetected() == isPresent);
        CHECK(manager->currentTimecodeDisplay() == "01:02:03:04");
    }
}

TEST_CASE_FIXTURE(Fixture, "a stop clears what is shown, keeps the figures and drops late blocks") {
    captureOpen(mono);
    handle({timecode({{1, 2, 3, 4}})});
    deliver({timecode({{1, 2, 3, 5}})});
    manager->stopCapturing();
    queue.drain();
    CHECK_FALSE(manager->isCapturing());
    CHECK_FALSE(manager->signalDetected());
    CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    CHECK(manager->selectedDeviceId() == mono);
    CHECK(manager->rawAudioLevel() == 0.5F);
    CHECK(audio.openDevice() == std::nullopt);

    // Blocks of one device never reach the capture of the next.
    manager->startCapturing();
    queue.drain();
    deliver({timecode({{1, 2, 3, 6}})});
    manager->stopCapturing();
    captureOpen(stereo);
    handle(Channels(2, std::vector<float>(10, 0.25F)));
    CHECK(manager->buffersReceivedCount() == 2);
    CHECK(decoded.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a frame may stop or restart the capture that it came from") {
    for (const bool restarts : {false, true}) {
        int frames = 0;
        manager->onFrameDecoded = [&](auto, auto) {
            ++frames;
            manager->stopCapturing();
            if (restarts) {
                capture(stereo);
            }
        };
        captureOpen(mono);
        deliver({timecode({{1, 2, 3, 4}, {1, 2, 3, 5}})});
        handle({timecode({{1, 2, 3, 6}})});
        CHECK(manager->isCapturing() == restarts);
        CHECK(frames == 1);
        CHECK_FALSE(manager->signalDetected());
        CHECK(manager->currentTimecodeDisplay() == "--:--:--:--");
    }
}

TEST_CASE_FIXTURE(Fixture, "what arrives when the manager is gone is dropped") {
    captureOpen(mono);
    deliver({timecode({{1, 2, 3, 4}})});
    manager->fetchInputDevices();
    manager.reset();
    queue.drain();
    CHECK(decoded.empty());
    CHECK(audio.openDevice() == std::nullopt);
}
