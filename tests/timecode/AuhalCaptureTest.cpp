#include "platform/simulated/SimulatedAudioInput.h"
#include "timecode/AudioInputDevice.h"
#include "timecode/AuhalCapture.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <string>
#include <vector>

using tessivo::AudioBlock;
using tessivo::AudioInputDevice;
using tessivo::AuhalCapture;
using tessivo::SimulatedAudioInput;
using Step = SimulatedAudioInput::Step;

namespace {

constexpr tessivo::AudioDeviceId stereo = 41, mute = 42, missing = 99;

/// What a block held, copied while it was valid.
struct Received {
    std::vector<std::vector<float>> channels;
    double sampleRate = 0.0;
};

struct Fixture {
    SimulatedAudioInput audio;
    AuhalCapture capture{audio};
    std::vector<Received> received;
    std::vector<tessivo::AudioStreamFormat> formats;

    Fixture() {
        audio.setDevices({{.id = stereo, .name = "Stereo", .format = {44'100.0, 2}},
                          {.id = mute, .name = "Mute", .format = {48'000.0, 0}}});
        capture.onFormat = [this](const auto& format) { formats.push_back(format); };
        capture.onSamples = [this](const AudioBlock& block) {
            Received copy;
            copy.sampleRate = block.sampleRate;
            for (std::size_t i = 0; i < block.channelCount; ++i) {
                const auto channel = block.channel(i);
                copy.channels.emplace_back(channel.begin(), channel.end());
            }
            received.push_back(std::move(copy));
        };
    }

    std::size_t timesTaken(Step step) const {
        return static_cast<std::size_t>(std::ranges::count(audio.steps(), step));
    }
};

}  // namespace

TEST_CASE("each step that fails gives its sentence, and the next stop releases what was opened") {
    struct Row {
        const char* prefix;
        Step step;
        bool formatKnown = false;
        bool unitOpen = true;
    };
    const Row rows[] = {
        {"Échec de création de l'AUHAL (status ", Step::createUnit, false, false},
        {"Échec activation entrée (status ", Step::enableInput},
        {"Échec désactivation sortie (status ", Step::disableOutput},
        {"Échec assignation du périphérique (status ", Step::setCurrentDevice},
        {"Échec lecture du format (status ", Step::readDeviceFormat},
        {"Échec configuration format client (status ", Step::setClientFormat},
        {"Échec configuration du callback (status ", Step::setInputCallback, true},
        {"Échec AudioUnitInitialize (status ", Step::initialize, true},
        {"Échec démarrage AUHAL (status ", Step::start, true},
    };
    for (const Row& row : rows) {
        Fixture fixture;
        fixture.audio.setStatus(row.step, -10'875);
        CHECK(fixture.capture.start(stereo) == row.prefix + std::string("-10875)."));
        CHECK(fixture.audio.steps().back() == row.step);
        CHECK(fixture.formats.size() == (row.formatKnown ? 1 : 0));
        CHECK_FALSE(fixture.audio.isRunning());
        CHECK(fixture.timesTaken(Step::dispose) == 0);
        fixture.capture.stop();
        CHECK(fixture.timesTaken(Step::dispose) == (row.unitOpen ? 1 : 0));
        fixture.audio.setStatus(row.step, 0);
        CHECK(fixture.capture.start(stereo) == std::nullopt);
    }
}

TEST_CASE("a start without a channel, a device or a unit says so") {
    Fixture fixture;
    CHECK(fixture.capture.start(mute) == "Le périphérique signale 0 canal.");
    CHECK(fixture.capture.start(missing) == "Échec assignation du périphérique (status " +
                                                std::to_string(SimulatedAudioInput::noSuchDevice) +
                                                ").");
    fixture.audio.setCreateNothing(true);
    CHECK(fixture.capture.start(stereo) == "Échec de création de l'AUHAL (status 0).");
    fixture.audio.setStatus(Step::findComponent, 1);
    CHECK(fixture.capture.start(stereo) == "Impossible de trouver le composant AUHAL.");
    CHECK(fixture.formats.empty());
}

TEST_CASE("blocks arrive with all channels at the device's rate, but for those that fail") {
    Fixture fixture;
    REQUIRE(fixture.capture.start(stereo) == std::nullopt);
    CHECK(fixture.formats == std::vector<tessivo::AudioStreamFormat>{{44'100.0, 2}});
    CHECK(fixture.audio.clientFormat() == tessivo::AudioStreamFormat{44'100.0, 2});

    const std::vector<std::vector<float>> blocks[] = {
        {{0.5F, -0.8F}, {0.1F, 0.2F}},
        {{}, {}},
        {std::vector<float>(4096, 0.25F), std::vector<float>(4096, -0.25F)},
    };
    for (const auto& block : blocks) {
        CHECK(fixture.audio.deliver(block) == 0);
        REQUIRE_FALSE(fixture.received.empty());
        CHECK(fixture.received.back().channels == block);
        CHECK(fixture.received.back().sampleRate == 44'100.0);
    }
    fixture.audio.setStatus(Step::render, -50);
    CHECK(fixture.audio.deliver(blocks[0]) == -50);
    fixture.audio.setStatus(Step::render, 0);
    const auto tooLong = fixture.audio.deliver(std::vector(2, std::vector<float>(4097)));
    CHECK(tooLong.value_or(0) != 0);
    CHECK(fixture.received.size() == std::size(blocks));
    CHECK(fixture.audio.deliver(blocks[0]) == 0);
    CHECK(fixture.received.size() == std::size(blocks) + 1);
}

TEST_CASE(
    "each start takes all steps, the second once the first unit is released; stops add none") {
    Fixture fixture;
    fixture.capture.stop();
    const std::vector<Step> opening = {
        Step::findComponent,   Step::createUnit,       Step::enableInput,
        Step::disableOutput,   Step::setCurrentDevice, Step::readDeviceFormat,
        Step::setClientFormat, Step::setInputCallback, Step::initialize,
        Step::start,
    };
    std::vector<Step> expected;
    for (int i = 0; i < 2; ++i) {
        REQUIRE(fixture.capture.start(stereo) == std::nullopt);
        CHECK(fixture.audio.isRunning());
        expected.insert(expected.end(), opening.begin(), opening.end());
        expected.insert(expected.end(), {Step::stop, Step::uninitialize, Step::dispose});
    }
    fixture.capture.stop();
    fixture.capture.stop();
    CHECK(fixture.audio.steps() == expected);
    CHECK(fixture.audio.deliver({}) == std::nullopt);
    CHECK(fixture.capture.handleRender(16) == 0);
    CHECK(fixture.received.empty());
}

TEST_CASE("devices with inputs and a name are listed in the system's order") {
    SimulatedAudioInput audio;
    CHECK(tessivo::fetchInputDevices(audio).empty());
    audio.setDevices({{.id = 9, .name = "Zèbre"},
                      {.id = 3, .name = std::nullopt},
                      {.id = 5, .name = "Output only", .configurationSize = 0},
                      {.id = 6, .name = "Unreadable", .configurationSize = std::nullopt},
                      {.id = 4, .name = "Output with a configuration", .configurationSize = 8},
                      {.id = 1, .name = "Zèbre"}});
    CHECK(tessivo::fetchInputDevices(audio) ==
          std::vector<AudioInputDevice>{
              {9, "Zèbre"}, {4, "Output with a configuration"}, {1, "Zèbre"}});
}
