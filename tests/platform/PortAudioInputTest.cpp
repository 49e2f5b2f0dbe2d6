// Run under tests/support/with-pulse.sh.
#include "platform/audio/PortAudioInput.h"
#include "support/TemporaryFolder.h"
#include "timecode/AudioLevel.h"
#include "timecode/AuhalCapture.h"

#include <doctest/doctest.h>
#include <portaudio.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <thread>
#include <vector>

using tessivo::AudioBlock;
using tessivo::AudioDeviceId;
using tessivo::AudioStreamFormat;
using tessivo::AuhalCapture;
using tessivo::PortAudioInput;

namespace {

constexpr double toneFrequency = 1000.0;

template <typename Condition>
bool waitFor(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return condition();
}

/// A capture as the program makes it, and what it delivered.
struct Capture {
    explicit Capture(PortAudioInput& system) : auhal(system) {
        constexpr std::size_t kept = 48'000 * 60;
        auhal.onFormat = [this](const AudioStreamFormat& format) {
            sampleRate = format.sampleRate;
            std::ranges::for_each(samples, [](auto& channel) { channel.reserve(kept); });
        };
        auhal.onSamples = [this](const AudioBlock& block) {
            for (std::size_t channel = 0; channel < samples.size(); ++channel) {
                const auto added = block.channel(channel);
                if (samples[channel].size() + added.size() <= kept) {
                    samples[channel].insert(samples[channel].end(), added.begin(), added.end());
                }
            }
            ++blocks;
        };
    }

    std::array<std::vector<float>, 2> samples;  ///< of the first channels; only after a stop
    double sampleRate = 0.0;
    std::atomic<int> blocks = 0;
    AuhalCapture auhal;  // destroyed first
};

const std::string noSuchDevice =
    "Échec assignation du périphérique (status " + std::to_string(paInvalidDevice) + ").";

std::optional<AudioDeviceId> deviceNamed(PortAudioInput& system, std::string_view name) {
    for (const AudioDeviceId id : system.deviceIds()) {
        if (system.deviceName(id) == name) {
            return id;
        }
    }
    return std::nullopt;
}

void shell(const std::string& command) {
    REQUIRE(std::system(command.c_str()) == 0);
}

/// Plays a tone on the left channel of the stereo sink and silence on the right, for a minute or
/// until the server ends.
void playTone(const std::string& path) {
    std::vector<std::int16_t> samples;  // left before right
    for (int i = 0; i < 48'000 * 60; ++i) {
        const double phase = 2.0 * std::numbers::pi * toneFrequency * i / 48'000.0;
        samples.push_back(static_cast<std::int16_t>(std::lround(16'000.0 * std::sin(phase))));
        samples.push_back(0);
    }
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size() * sizeof samples.front()));
    shell("paplay --raw --format=s16ne --rate=48000 --channels=2 --device=stereo '" + path +
          "' >/dev/null 2>&1 &");
}

/// Rising zero crossings per second in the second half of the samples.
double frequency(const std::vector<float>& samples, double sampleRate) {
    const std::size_t first = samples.size() / 2;
    int crossings = 0;
    for (std::size_t i = first + 1; i < samples.size(); ++i) {
        crossings += samples[i - 1] < 0.0F && samples[i] >= 0.0F ? 1 : 0;
    }
    return crossings * sampleRate / static_cast<double>(samples.size() - first);
}

std::size_t entries(const char* folder) {
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace

TEST_CASE("both inputs are listed by name, alike each time, and ids of none are refused") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const auto ids = system.deviceIds();
    const auto stereo = deviceNamed(system, "tessivo_stereo");
    const auto quad = deviceNamed(system, "tessivo_quad");
    REQUIRE(stereo.has_value());
    REQUIRE(quad.has_value());
    CHECK(*stereo != *quad);
    CHECK(system.inputConfigurationSize(*stereo).value_or(0) > 0);
    CHECK(system.deviceIds() == ids);
    CHECK(PortAudioInput("").deviceIds() == ids);  // without the lister
    for (const AudioDeviceId id : {AudioDeviceId{0}, AudioDeviceId{4711}, ~AudioDeviceId{0}}) {
        CHECK_FALSE(system.deviceName(id).has_value());
        CHECK_FALSE(system.inputConfigurationSize(id).has_value());
        CHECK(Capture(system).auhal.start(id) == noSuchDevice);
    }
}

TEST_CASE("a capture delivers what is played, and the list refreshes meanwhile") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const auto ids = system.deviceIds();
    const tessivo::test::TemporaryFolder folder;
    playTone(folder.path("tone.raw"));
    Capture capture(system);
    REQUIRE(capture.auhal.start(deviceNamed(system, "tessivo_stereo").value()) == std::nullopt);
    REQUIRE(waitFor([&] { return capture.blocks >= 200; }));
    const int before = capture.blocks;
    for (int i = 0; i < 3; ++i) {
        CHECK(system.deviceIds() == ids);
    }
    CHECK(waitFor([&] { return capture.blocks > before + 100; }));

    capture.auhal.stop();
    const int atStop = capture.blocks;
    CHECK(tessivo::peakLevel(capture.samples[0]) > 0.2F);
    CHECK(tessivo::peakLevel(capture.samples[1]) < 0.01F);
    // A block lost or doubled, or a rate other than the one told, would show here.
    CHECK(frequency(capture.samples[0], capture.sampleRate) ==
          doctest::Approx(toneFrequency).epsilon(0.005));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    CHECK(capture.blocks == atStop);
}

TEST_CASE("a sound server that dies ends the capture quietly, and a later start works again") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const AudioDeviceId device = deviceNamed(system, "tessivo_stereo").value();
    Capture capture(system);
    REQUIRE(capture.auhal.start(device) == std::nullopt);
    REQUIRE(waitFor([&] { return capture.blocks > 0; }));
    shell("kill -9 $(cat \"$PULSE_PID_FILE\")");

    const std::clock_t cpuBefore = std::clock();
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double cpuSeconds = double(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    CHECK(cpuSeconds < 0.5);
    CHECK_FALSE(deviceNamed(system, "tessivo_stereo").has_value());
    CHECK(capture.auhal.start(device) == noSuchDevice);
    capture.auhal.stop();

    shell("\"$PULSE_START\"");
    CHECK(deviceNamed(system, "tessivo_stereo") == device);
    const int before = capture.blocks;
    REQUIRE(capture.auhal.start(device) == std::nullopt);
    CHECK(waitFor([&] { return capture.blocks > before; }));
}

TEST_CASE("quick starts and stops leave no thread and no descriptor behind") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const AudioDeviceId stereo = deviceNamed(system, "tessivo_stereo").value();
    const AudioDeviceId quad = deviceNamed(system, "tessivo_quad").value();
    const auto cycle = [&](AudioDeviceId device) {
        Capture capture(system);
        CHECK(capture.auhal.start(device) == std::nullopt);
        capture.auhal.stop();
    };
    cycle(stereo);  // what the libraries keep for the whole run
    const std::size_t threads = entries("/proc/self/task");
    const std::size_t descriptors = entries("/proc/self/fd");
    for (int i = 0; i < 20; ++i) {
        cycle(i % 2 == 0 ? quad : stereo);
    }
    CHECK(entries("/proc/self/task") == threads);
    CHECK(entries("/proc/self/fd") == descriptors);
}
