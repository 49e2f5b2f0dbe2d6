// Run under tests/support/with-pulse.sh.
#include <QProcess>

#include "platform/audio/PortAudioInput.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SystemClock.h"
#include "support/EventLoop.h"
#include "support/TemporaryFolder.h"
#include "timecode/LtcManager.h"

#include <doctest/doctest.h>
#include <portaudio.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <thread>
#include <vector>

using namespace tessivo;
using test::runUntil;
using namespace std::chrono_literals;

namespace {

const std::string noSuchDevice =
    "Échec assignation du périphérique (status " + std::to_string(paInvalidDevice) + ").";

/// Timecode input as the program makes it, but for its patience: a busy computer may take longer to
/// start a sanitised program than the program waits.
struct Desk {
    explicit Desk(std::string program = TESSIVO_AUDIO,
                  std::chrono::seconds patience = std::chrono::seconds(20))
        : audio(std::move(program), patience) {
        manager.onFrameDecoded = [this](std::int64_t frame, std::int64_t) {
            run = frame == last + 1 ? run + 1 : 1;
            missing += frame - last - 1;
            ++frames;
            last = frame;
        };
    }

    std::vector<AudioInputDevice> devices() {
        manager.fetchInputDevices();
        REQUIRE(manager.isFetchingInputDevices());
        REQUIRE(runUntil([this] { return !manager.isFetchingInputDevices(); }));
        return manager.availableInputDevices();
    }
    std::optional<AudioDeviceId> deviceNamed(std::string_view name) {
        const auto all = devices();
        const auto found = std::ranges::find(all, name, &AudioInputDevice::name);
        return found != all.end() ? std::optional(found->id) : std::nullopt;
    }
    /// What stood in the way of sound.
    std::optional<std::string> capture(AudioDeviceId device) {
        manager.stopCapturing();
        manager.setSelectedDeviceId(device);
        manager.startCapturing();
        const std::int64_t before = manager.buffersReceivedCount();
        REQUIRE(runUntil(
            [&] { return manager.lastError() || manager.buffersReceivedCount() > before; }));
        return manager.lastError();
    }
    /// A slow computer takes longer to list and open devices than the program waits.
    AudioDeviceId device(std::string_view name) {
        std::optional<AudioDeviceId> found;
        for (int attempt = 0; !found && attempt < attempts; ++attempt) {
            found = deviceNamed(name);
        }
        REQUIRE(found.has_value());
        return *found;
    }
    bool captures(AudioDeviceId device, const std::optional<std::string>& failure = std::nullopt) {
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (capture(device) == failure) {
                return true;
            }
        }
        return false;
    }
    bool hears() {
        const std::int64_t before = manager.buffersReceivedCount();
        return runUntil([&] { return manager.buffersReceivedCount() >= before + 100; });
    }
    /// A second of frames one after the other, which a busy computer may take a while to manage.
    bool reads() {
        run = 0;
        bool is = false;
        for (int patience = 0; !is && patience < 4; ++patience) {
            is = runUntil([this] { return run >= 25; });
        }
        return is;
    }
    bool decodes(std::int64_t count) {
        frames = 0;
        return runUntil([this, count] { return frames >= count; });
    }

    static constexpr int attempts = 20;

    QtMainQueue queue;
    SystemClock clock;
    PortAudioInput audio;
    std::ostringstream log;
    std::int64_t last = 0, run = 0;  ///< the last frame, and how many came one after the other
    std::int64_t frames = 0, missing = 0;  ///< how many came, and between them didn't
    LtcManager manager{clock, queue, audio, log};
};

void shell(const std::string& command) {
    REQUIRE(std::system(command.c_str()) == 0);
}

/// Timecode on the left channel of the stereo sink, for five minutes or until the server ends.
struct Player {
    Player() {
        const std::string wav = folder.path("ltc.wav");
        shell(TESSIVO_LTC " --start 10:00:00:00 --rate 25 --length 300 " + wav);
        process.start("paplay", {"--channel-map=front-left", "--device=stereo", wav.c_str()});
    }
    ~Player() {
        process.kill();
        process.waitForFinished();
    }

    test::TemporaryFolder folder;
    QProcess process;
};

std::size_t entries(const char* folder) {
    const std::filesystem::directory_iterator all(folder);
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

}  // namespace

TEST_CASE("both inputs are listed by name, alike each time, and ids of none are refused") {
    Desk desk;
    const AudioDeviceId stereo = desk.device("tessivo_stereo");
    const AudioDeviceId quad = desk.device("tessivo_quad");
    CHECK(stereo != quad);
    const auto devices = desk.devices();
    CHECK(desk.devices() == devices);
    for (const char* broken : {"/nowhere/audio", "/bin/false"}) {
        CHECK(Desk(broken).devices().empty());
        CHECK(Desk(broken).capture(1) == "Échec de création de l'AUHAL (status -32).");
    }
    for (const AudioDeviceId id : {AudioDeviceId{0}, AudioDeviceId{4711}, ~AudioDeviceId{0}}) {
        CHECK(desk.capture(id) == noSuchDevice);
    }
}

TEST_CASE("timecode is read while the list is refreshed, and while its lister hangs") {
    const test::TemporaryFolder folder;
    const Player player;
    const std::string lister = folder.path("lister");
    const auto losesNothing = [&] {
        std::filesystem::remove(lister);
        std::filesystem::create_symlink(TESSIVO_AUDIO, lister);
        Desk desk(lister);
        REQUIRE(desk.captures(desk.device("tessivo_stereo")));
        REQUIRE(desk.reads());
        const auto devices = desk.devices();
        CHECK(desk.deviceNamed("tessivo_stereo") == desk.manager.selectedDeviceId());
        CHECK(desk.reads());
        CHECK(desk.manager.levelsPerChannel()[0] > 0.2F);
        CHECK(desk.manager.levelsPerChannel()[1] < 0.01F);

        std::filesystem::remove(lister);
        folder.write("lister", "#!/bin/sh\nexec sleep 600\n");
        std::filesystem::permissions(lister, std::filesystem::perms::owner_all);
        desk.manager.fetchInputDevices();
        CHECK(desk.reads());
        CHECK(desk.manager.isFetchingInputDevices());
        CHECK(desk.manager.availableInputDevices() == devices);
        return !desk.manager.hasLostAudio();
    };
    bool is = false;  // a busy computer may lose some for reasons of its own
    for (int attempt = 0; !is && attempt < 3; ++attempt) {
        is = losesNothing();
    }
    CHECK(is);
}

TEST_CASE("some sound waits for a main thread that stands still, and what is lost beyond is told") {
    const Player player;
    Desk desk;
    const AudioDeviceId device = desk.device("tessivo_stereo");
    // Sound is also lost elsewhere on a busy computer, so that not every attempt counts.
    const auto standsStill = [&](std::chrono::milliseconds time, const auto& isAsExpected) {
        bool is = false;
        for (int attempt = 0; !is && attempt < Desk::attempts; ++attempt) {
            REQUIRE(desk.captures(device));
            REQUIRE(desk.reads());
            desk.missing = 0;
            desk.log.str({});
            std::this_thread::sleep_for(time);
            REQUIRE(desk.decodes(40));     // more than can have waited
            desk.manager.stopCapturing();  // tells what was lost
            is = isAsExpected();
        }
        return is;
    };
    // 32 channels: the pipe alone holds a sixth of a second.
    CHECK(standsStill(700ms, [&] { return !desk.manager.hasLostAudio() && desk.missing == 0; }));
    CHECK(standsStill(3s, [&] {
        const std::string told = desk.log.str();
        const std::size_t figure = told.find('(');
        const long lost = figure != told.npos ? std::stol(told.substr(figure + 1)) : 0;  // ms
        return desk.manager.hasLostAudio() && lost >= 500 &&
               std::abs(lost - desk.missing * 1000 / 25) <= 120;
    }));
}

TEST_CASE("a driver that hangs or crashes is told at its step, and the next capture works") {
    struct Row {
        const char* call;
        const char* fault;
        const char* sentence;
    };
    const Row rows[] = {
        {"Pa_Initialize", "hang", "Échec de création de l'AUHAL (status -110)."},
        {"Pa_Initialize", "crash", "Échec de création de l'AUHAL (status -32)."},
        {"Pa_OpenStream", "hang", "Échec lecture du format (status -110)."},
        {"Pa_OpenStream", "crash", "Échec lecture du format (status -32)."},
        {"Pa_StartStream", "hang", "Échec démarrage AUHAL (status -110)."},
        {"Pa_CloseStream", "hang", nullptr},
    };
    const test::TemporaryFolder folder;
    const std::string program = folder.path("audio");
    Desk desk(program, std::chrono::seconds(5));  // which passes in each hang
    // AddressSanitizer minds what is loaded before it. Looking for leaks, and for the lines of a
    // crash that is meant, takes longer than all that a listing does.
    const auto become = [&](const Row& row) {
        folder.write("new",
                     "#!/bin/sh\nASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0:symbolize=0 "
                     "FAULTY_CALL=" +
                         std::string(row.call) + " FAULT=" + row.fault +
                         " LD_PRELOAD=" TESSIVO_FAULTY_PORTAUDIO " exec " TESSIVO_AUDIO
                         " \"$@\"\n");
        std::filesystem::permissions(folder.path("new"), std::filesystem::perms::owner_all);
        std::filesystem::rename(folder.path("new"), program);
    };
    const Row sound{"none", "hang", nullptr};
    become(sound);
    const AudioDeviceId device = desk.device("tessivo_stereo");
    for (const Row& row : rows) {
        CAPTURE(row.call);
        CAPTURE(row.fault);
        become(row);
        CHECK(desk.captures(
            device, row.sentence ? std::optional<std::string>(row.sentence) : std::nullopt));
        CHECK(desk.manager.isCapturing() == (row.sentence == nullptr));
        become(sound);
        CHECK(desk.captures(device));
    }
}

TEST_CASE("a sound server that dies is told, and captured again when it is back") {
    Desk desk;
    const AudioDeviceId device = desk.device("tessivo_stereo");
    REQUIRE(desk.captures(device));
    REQUIRE(desk.hears());
    shell("kill -9 $(cat \"$PULSE_PID_FILE\")");
    CHECK(runUntil([&] { return desk.manager.lastError().has_value(); }));
    CHECK(desk.manager.lastError() == "Plus de son reçu de « tessivo_stereo ».");
    CHECK(runUntil([&] { return !desk.deviceNamed("tessivo_quad"); }));
    shell("\"$PULSE_START\"");
    CHECK(desk.hears());
    CHECK(desk.manager.lastError() == std::nullopt);
}

TEST_CASE("quick starts and stops leave no thread and no descriptor behind") {
    Desk desk;
    const AudioDeviceId stereo = desk.device("tessivo_stereo");
    const AudioDeviceId quad = desk.device("tessivo_quad");
    const auto cycle = [&](AudioDeviceId device) {
        CHECK(desk.captures(device));
        desk.manager.stopCapturing();
    };
    cycle(stereo);  // what the libraries keep for the whole run
    const std::size_t threads = entries("/proc/self/task");
    const std::size_t descriptors = entries("/proc/self/fd");
    for (int i = 0; i < 8; ++i) {
        cycle(i % 2 == 0 ? quad : stereo);
    }
    CHECK(entries("/proc/self/task") == threads);
    CHECK(entries("/proc/self/fd") == descriptors);
}
