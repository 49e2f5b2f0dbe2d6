#include "platform/simulated/SimulatedAudioInput.h"
#include "timecode/AudioInputDevice.h"
#include "timecode/AuhalCapture.h"

#include <doctest/doctest.h>

#include <vector>

using tessivo::AudioBlock;
using tessivo::AudioInputDevice;
using tessivo::AuhalCapture;
using tessivo::SimulatedAudioInput;
using Step = SimulatedAudioInput::Step;

namespace {

constexpr tessivo::AudioDeviceId stereo = 41, mute = 42, missing = 99;

struct Fixture {
    SimulatedAudioInput audio;
    AuhalCapture capture{audio};
    /// The channels of each block, copied while it was valid.
    std::vector<std::vector<std::vector<float>>> received;
    std::vector<tessivo::AudioStreamFormat> formats;

    Fixture() {
        audio.setDevices({{.id = stereo, .name = "Stereo", .format = {44'100.0, 2}},
                          {.id = mute, .name = "Mute", .format = {48'000.0, 0}}});
        capture.onFormat = [this](const auto& format) { formats.push_back(format); };
        capture.onSamples = [this](const AudioBlock& block) {
            CHECK(block.sampleRate == 44'100.0);
            auto& channels = received.emplace_back();
            for (std::size_t i = 0; i < block.channelCount; ++i) {
                channels.emplace_back(block.channel(i).begin(), block.channel(i).end());
            }
        };
    }
};

}  // namespace

TEST_CASE("each step that fails gives its sentence, and all that was opened is released") {
    struct Row {
        Step step;
        const char* failure;
        bool formatKnown = false;
    };
    const Row rows[] = {
        {Step::findComponent, "Impossible de trouver le composant AUHAL."},
        {Step::createUnit, "Échec de création de l'AUHAL (status -10875)."},
        {Step::enableInput, "Échec activation entrée (status -10875)."},
        {Step::disableOutput, "Échec désactivation sortie (status -10875)."},
        {Step::setCurrentDevice, "Échec assignation du périphérique (status -10875)."},
        {Step::readDeviceFormat, "Échec lecture du format (status -10875)."},
        {Step::setClientFormat, "Échec configuration format client (status -10875)."},
        {Step::setInputCallback, "Échec configuration du callback (status -10875).", true},
        {Step::initialize, "Échec AudioUnitInitialize (status -10875).", true},
        {Step::start, "Échec démarrage AUHAL (status -10875).", true},
    };
    std::vector<Step> steps;  // in their order up to the one that fails, and none after it
    for (const Row& row : rows) {
        CAPTURE(row.failure);
        steps.push_back(row.step);
        Fixture fixture;
        fixture.audio.setStatus(row.step, -10'875);
        CHECK(fixture.capture.start(stereo) == row.failure);
        CHECK(fixture.audio.steps() == steps);
        CHECK(fixture.formats.size() == (row.formatKnown ? 1 : 0));
        CHECK_FALSE(fixture.audio.isRunning());

        // The next start first releases what is left of this one.
        fixture.audio.setStatus(row.step, 0);
        CHECK(fixture.capture.start(stereo) == std::nullopt);
        CHECK(fixture.audio.steps()[steps.size()] ==
              (steps.size() > 2 ? Step::stop : Step::findComponent));
    }

    Fixture fixture;
    fixture.capture.stop();
    CHECK(fixture.capture.start(stereo) == std::nullopt);
    CHECK(fixture.audio.isRunning());
    fixture.capture.stop();
    fixture.capture.stop();
    steps.insert(steps.end(), {Step::stop, Step::uninitialize, Step::dispose});
    CHECK(fixture.audio.steps() == steps);
    CHECK(fixture.audio.deliver({}) == std::nullopt);
    CHECK(fixture.capture.handleRender(16) == 0);
    CHECK(fixture.received.empty());
}

TEST_CASE("a start without a channel, a device or a unit says so") {
    Fixture fixture;
    CHECK(fixture.capture.start(mute) == "Le périphérique signale 0 canal.");
    CHECK(fixture.capture.start(missing) == "Échec assignation du périphérique (status -9996).");
    fixture.audio.setCreateNothing(true);
    CHECK(fixture.capture.start(stereo) == "Échec de création de l'AUHAL (status 0).");
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
        CHECK(fixture.received.back() == block);
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
