// Run under tests/support/with-pulse.sh.
#include "platform/audio/PortAudioInput.h"

#include <doctest/doctest.h>
#include <portaudio.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <numbers>
#include <thread>
#include <vector>

using tessivo::AudioDeviceId;
using tessivo::AudioInputUnit;
using tessivo::AudioStatus;
using tessivo::AudioStreamFormat;
using tessivo::PortAudioInput;

namespace {

constexpr double toneFrequency = 1000.0;

template <typename Condition>
bool waitFor(Condition condition, std::chrono::seconds limit = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return condition();
}

/// A unit taken through all steps, and what it delivered.
class Capture {
public:
    /// The name of the step that failed, empty when all succeeded.
    std::string start(PortAudioInput& system, AudioDeviceId device) {
        if (!system.findInputComponent()) {
            return "find";
        }
        AudioStreamFormat& format = format_;
        const std::array<std::pair<const char*, std::function<AudioStatus()>>, 9> steps{{
            {"create", [&] { return system.createUnit(unit_); }},
            {"enable", [&] { return unit_->enableInput(); }},
            {"disable", [&] { return unit_->disableOutput(); }},
            {"select", [&] { return unit_->setCurrentDevice(device); }},
            {"read", [&] { return unit_->readDeviceFormat(format); }},
            {"client", [&] { return unit_->setClientFormat(format); }},
            {"callback", [&] { return prepare(), unit_->setInputCallback(&received, this); }},
            {"initialise", [&] { return unit_->initialize(); }},
            {"start", [&] { return unit_->start(); }},
        }};
        for (const auto& [name, step] : steps) {
            status_ = step();
            if (status_ != tessivo::audioSuccess) {
                return name;
            }
        }
        return "";
    }

    AudioStatus stop() { return unit_->stop(); }
    void destroy() { unit_.reset(); }

    AudioInputUnit& unit() { return *unit_; }
    AudioStatus status() const { return status_; }
    const AudioStreamFormat& format() const { return format_; }
    int blocks() const { return blocks_; }
    int failures() const { return failures_; }
    int largestBlock() const { return largestBlock_; }
    /// Samples of one channel; only after `stop`.
    const std::vector<float>& samples(std::size_t channel) const { return samples_[channel]; }
    /// The longest time between two blocks since the last call, in seconds.
    double takeLongestGap() { return longestGap_.exchange(0.0); }

private:
    static constexpr std::size_t kept = 48'000 * 60;

    void prepare() {
        block_.assign(format_.channelsPerFrame,
                      std::vector<float>(AudioInputUnit::maximumFramesPerSlice));
        for (auto& channel : samples_) {
            channel.clear();
            channel.reserve(kept);
        }
        buffers_.clear();
        for (auto& channel : block_) {
            buffers_.push_back({channel.data(), 0});
        }
    }

    static AudioStatus received(void* reference, std::uint32_t frames) {
        return static_cast<Capture*>(reference)->receive(frames);
    }

    AudioStatus receive(std::uint32_t frames) {
        for (auto& buffer : buffers_) {
            buffer.byteSize = frames * std::uint32_t{sizeof(float)};
        }
        const AudioStatus status = unit_->render(frames, buffers_);
        failures_ += status != tessivo::audioSuccess ? 1 : 0;
        for (std::size_t channel = 0; channel < samples_.size(); ++channel) {
            if (samples_[channel].size() + frames <= kept) {
                samples_[channel].insert(samples_[channel].end(), block_[channel].begin(),
                                         block_[channel].begin() + frames);
            }
        }
        const auto now = std::chrono::steady_clock::now();
        if (blocks_ > 0) {
            longestGap_ =
                std::max(longestGap_.load(), std::chrono::duration<double>(now - last_).count());
        }
        last_ = now;
        largestBlock_ = std::max(largestBlock_.load(), static_cast<int>(frames));
        ++blocks_;
        return status;
    }

    AudioStreamFormat format_;
    AudioStatus status_ = tessivo::audioSuccess;
    std::vector<std::vector<float>> block_;
    std::vector<tessivo::AudioBuffer> buffers_;
    std::array<std::vector<float>, 2> samples_;
    std::chrono::steady_clock::time_point last_;
    std::atomic<double> longestGap_ = 0.0;
    std::atomic<int> blocks_ = 0;
    std::atomic<int> failures_ = 0;
    std::atomic<int> largestBlock_ = 0;
    std::unique_ptr<AudioInputUnit> unit_;  // destroyed first
};

std::optional<AudioDeviceId> deviceNamed(PortAudioInput& system, std::string_view name) {
    for (const AudioDeviceId id : system.deviceIds()) {
        if (system.deviceName(id) == name) {
            return id;
        }
    }
    return std::nullopt;
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    REQUIRE_MESSAGE(value != nullptr, "run under tests/support/with-pulse.sh");
    return value;
}

void killServer() {
    pid_t server = 0;
    std::ifstream(environment("PULSE_PID_FILE")) >> server;
    REQUIRE(server > 1);
    REQUIRE(kill(server, SIGKILL) == 0);
}

void startServer() {
    REQUIRE(std::system(environment("PULSE_START").c_str()) == 0);
}

/// Plays a tone on the left channel of the stereo sink, silence on the right, while it lives.
class Tone {
public:
    Tone() : folder_(environment("XDG_RUNTIME_DIR")) {
        writeWave(folder_ / "tone.wav");
        const std::string command = "paplay --device=stereo '" + (folder_ / "tone.wav").string() +
                                    "' & echo $! > '" + (folder_ / "tone.pid").string() + "'";
        REQUIRE(std::system(command.c_str()) == 0);
    }
    ~Tone() {
        pid_t player = 0;
        std::ifstream(folder_ / "tone.pid") >> player;
        if (player > 1) {
            kill(player, SIGTERM);
        }
    }

private:
    // RIFF/WAVE with 16-bit linear PCM, two channels, 48 kHz, one minute.
    static void writeWave(const std::filesystem::path& path) {
        constexpr std::uint32_t rate = 48'000, frames = rate * 60;
        std::ofstream file(path, std::ios::binary);
        const auto put = [&](std::uint32_t value, int bytes) {
            for (int i = 0; i < bytes; ++i) {
                file.put(static_cast<char>(value >> (8 * i)));
            }
        };
        file << "RIFF";
        put(36 + frames * 4, 4);
        file << "WAVEfmt ";
        put(16, 4);
        put(1, 2);
        put(2, 2);
        put(rate, 4);
        put(rate * 4, 4);
        put(4, 2);
        put(16, 2);
        file << "data";
        put(frames * 4, 4);
        for (std::uint32_t i = 0; i < frames; ++i) {
            const double phase = 2.0 * std::numbers::pi * toneFrequency * i / rate;
            put(static_cast<std::uint16_t>(std::lround(16'000.0 * std::sin(phase))), 2);
            put(0, 2);
        }
    }

    std::filesystem::path folder_;
};

float peak(const std::vector<float>& samples) {
    float highest = 0.0F;
    for (const float sample : samples) {
        highest = std::max(highest, std::abs(sample));
    }
    return highest;
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

TEST_CASE("both inputs are listed by name, in the same order and with the same ids each time") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const auto ids = system.deviceIds();
    const auto stereo = deviceNamed(system, "tessivo_stereo");
    const auto quad = deviceNamed(system, "tessivo_quad");
    REQUIRE(stereo.has_value());
    REQUIRE(quad.has_value());
    CHECK(*stereo != *quad);
    CHECK(system.inputConfigurationSize(*stereo).value_or(0) > 0);
    CHECK(system.deviceIds() == ids);
    CHECK_FALSE(system.deviceName(4711).has_value());
    CHECK_FALSE(system.inputConfigurationSize(4711).has_value());

    PortAudioInput withoutLister("");
    CHECK(withoutLister.deviceIds() == ids);
}

TEST_CASE("an id that is no device fails at the select step, with PortAudio's code") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    for (const AudioDeviceId id : {AudioDeviceId{0}, AudioDeviceId{4711}, ~AudioDeviceId{0}}) {
        Capture capture;
        CHECK(capture.start(system, id) == "select");
        CHECK(capture.status() == paInvalidDevice);
    }
}

TEST_CASE("steps that don't fit the opened device are refused") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    std::unique_ptr<AudioInputUnit> unit;
    REQUIRE(system.createUnit(unit) == tessivo::audioSuccess);
    AudioStreamFormat format;
    CHECK(unit->readDeviceFormat(format) == paInvalidDevice);
    CHECK(unit->start() == paBadStreamPtr);
    REQUIRE(unit->setCurrentDevice(deviceNamed(system, "tessivo_stereo").value()) == 0);
    REQUIRE(unit->readDeviceFormat(format) == 0);
    CHECK(unit->setClientFormat({format.sampleRate * 2, 1}) == paInvalidSampleRate);
    CHECK(unit->setClientFormat({format.sampleRate, 0}) == paInvalidChannelCount);
    CHECK(unit->setClientFormat({format.sampleRate, format.channelsPerFrame + 1}) ==
          paInvalidChannelCount);
    CHECK(unit->initialize() == paInvalidChannelCount);
    CHECK(unit->setClientFormat({format.sampleRate, 1}) == 0);
    CHECK(unit->initialize() == paNullCallback);
    CHECK(unit->render(0, {}) == paBadBufferPtr);
    CHECK(unit->stop() == 0);
}

TEST_CASE("a capture delivers what is played, in timed blocks, and the list refreshes meanwhile") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const auto ids = system.deviceIds();
    const Tone tone;
    Capture capture;
    REQUIRE(capture.start(system, deviceNamed(system, "tessivo_stereo").value()) == "");
    CHECK(capture.format().sampleRate > 0.0);
    REQUIRE(waitFor([&] { return capture.blocks() >= 200; }));

    capture.takeLongestGap();
    const int before = capture.blocks();
    for (int i = 0; i < 3; ++i) {
        CHECK(system.deviceIds() == ids);
    }
    CHECK(waitFor([&] { return capture.blocks() > before + 100; }));
    MESSAGE("longest gap while the list was refreshed: ", capture.takeLongestGap() * 1000.0, " ms");

    REQUIRE(capture.stop() == tessivo::audioSuccess);
    const int atStop = capture.blocks();
    MESSAGE("blocks of ", capture.largestBlock(), " frames at ", capture.format().sampleRate,
            " Hz, ", capture.format().channelsPerFrame, " channels");
    CHECK(capture.largestBlock() <= int{AudioInputUnit::maximumFramesPerSlice});
    CHECK(capture.failures() == 0);
    CHECK(peak(capture.samples(0)) > 0.2F);
    CHECK(peak(capture.samples(1)) < 0.01F);
    // A block lost or doubled, or a rate other than the one told, would show here.
    CHECK(frequency(capture.samples(0), capture.format().sampleRate) ==
          doctest::Approx(toneFrequency).epsilon(0.005));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    CHECK(capture.blocks() == atStop);
}

TEST_CASE("a sound server that dies ends the capture quietly, and a later start works again") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const AudioDeviceId device = deviceNamed(system, "tessivo_stereo").value();
    Capture first;
    REQUIRE(first.start(system, device) == "");
    REQUIRE(waitFor([&] { return first.blocks() > 0; }));
    killServer();

    const std::clock_t cpuBefore = std::clock();
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const double cpuSeconds = double(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    CHECK(cpuSeconds < 0.5);
    CHECK_FALSE(deviceNamed(system, "tessivo_stereo").has_value());
    CHECK(first.stop() == tessivo::audioSuccess);
    first.destroy();

    Capture second;
    CHECK(second.start(system, device) == "select");
    CHECK(second.status() == paInvalidDevice);
    second.destroy();

    startServer();
    CHECK(deviceNamed(system, "tessivo_stereo") == device);
    Capture third;
    REQUIRE(third.start(system, device) == "");
    CHECK(waitFor([&] { return third.blocks() > 0; }));
}

TEST_CASE("quick starts and stops leave no thread and no descriptor behind") {
    PortAudioInput system(TESSIVO_DEVICE_LISTER);
    const AudioDeviceId stereo = deviceNamed(system, "tessivo_stereo").value();
    const AudioDeviceId quad = deviceNamed(system, "tessivo_quad").value();
    const auto cycle = [&](AudioDeviceId device) {
        Capture capture;
        CHECK(capture.start(system, device) == "");
        CHECK(capture.unit().stop() == tessivo::audioSuccess);
        CHECK(capture.unit().stop() == tessivo::audioSuccess);
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
