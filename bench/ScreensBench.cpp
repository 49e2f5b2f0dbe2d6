// What the screens cost while nothing is asked of them, how long timecode takes to reach the
// cursor, and the next song the stage: bench_screens [SECONDS per measurement, 20 if left out
// [CHANNELS, 64 [SONGS that the stage steps through, 60]]]. Drawn by the platform that
// QT_QPA_PLATFORM names, in software if QT_QUICK_BACKEND says so; the audio is delivered at the
// pace of a real device.

#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlComponent>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QScreen>
#include <QTimer>

#include "kit/ScreenContext.h"
#include "kit/ScreenZooms.h"
#include "ltc/LtcEncoder.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SystemClock.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "sync/AdminBroadcaster.h"
#include "timecode/LtcManager.h"

#include <sys/resource.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

using namespace tessivo;
using SteadyClock = std::chrono::steady_clock;

namespace {

constexpr int adminMode = 1;  // of RootView.LaunchMode
constexpr std::size_t blockFrames = 512;
constexpr int sampleRate = 48000;
constexpr ltc::FrameRate frameRate{};  // 25 frames per second

/// Songs that start one second of timecode apart, from 10:00:01:00 on.
Show showOfSeconds(int seconds) {
    Show show;
    for (int i = 0; i <= seconds; ++i) {
        Song song;
        song.title = "Morceau " + std::to_string(i);
        song.duration = 240;
        song.guests.push_back({Uuid::random(), "Léa", "HF 2", "Mix 3", std::nullopt});
        song.ltcTimecode = ltc::toText({10, i / 60, i % 60, 0});
        show.songs.push_back(std::move(song));
    }
    return show;
}

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// The whole program with an audio device of 64 channels, on the real event loop and clock.
class Production {
public:
    Production(int seconds, std::size_t channelCount)
        : seconds_(seconds), channelCount_(channelCount), state_(platform_) {
        state_.importShow(showOfSeconds(seconds));
        state_.setActiveDisplayShowId(state_.activeShowId());
        engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
        setScreenContext(engine_, context_);
        // Windows come and go here without ending the program.
        QObject::connect(&engine_, &QQmlEngine::quit, [] {});
    }

    /// The share of a core that the window of a QML file costs while it is only shown.
    void measureAtRest(const char* what, const char* file) {
        QQmlComponent component(&engine_, QUrl(QLatin1String(file)));
        const std::unique_ptr<QObject> window(component.create());
        show(*window);
        run(1.0);
        measureShare(what);
    }

    /// The stage on a full HD screen from song to song; then fitted to a dozen guests, at rest too.
    void measureStage(int songs) {
        measureSteps(showOfSeconds(songs), "one guest");
        Show crowded = showOfSeconds(songs);
        for (Song& song : crowded.songs) {
            for (int guest = 2; guest <= 12; ++guest) {
                const std::string number = std::to_string(guest);
                song.guests.push_back(
                    {Uuid::random(), "Guest " + number, "HF " + number, "Mix " + number, "-3"});
            }
        }
        ScreenZooms(state_.choices())
            .keep("stage", QGuiApplication::primaryScreen()->name(), ScreenZooms::fit);
        measureSteps(std::move(crowded), "fitted, 12 guests");
    }

    void measureSteps(Show of, const std::string& what) {
        const int songs = static_cast<int>(of.songs.size());
        state_.importShow(std::move(of));
        state_.setActiveDisplayShowId(state_.activeShowId());
        QQmlComponent component(
            &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Display/DisplayWindow.qml")));
        const std::unique_ptr<QObject> window(component.create());
        auto& shown = static_cast<QQuickWindow&>(*window);
        shown.resize(1920, 1080);
        show(shown);
        run(1.0);
        measureShare(("stage at rest, " + what + ", full HD (budget 1 %)").c_str());
        std::vector<SteadyClock::duration> laidOut, drawn;
        double least = 1e9;  // of the processor
        const int steps = std::min(50, songs - 1);
        state_.jumpTo((songs - steps) / 2);
        run(0.5);
        for (int step = 0; step < steps; ++step) {
            QEventLoop untilDrawn;
            QObject::connect(&shown, &QQuickWindow::frameSwapped, &untilDrawn, &QEventLoop::quit);
            const auto start = SteadyClock::now();
            const double used = processorSeconds();
            state_.goNext();
            laidOut.push_back(SteadyClock::now() - start);
            untilDrawn.exec();
            drawn.push_back(SteadyClock::now() - start);
            least = std::min(least, 1e3 * (processorSeconds() - used));
        }
        report(("song change laid out, " + what + " (budget 16 ms)").c_str(), laidOut);
        report(("song change drawn, " + what).c_str(), drawn);
        std::printf("%-50s processor %.2f ms\n", ("song change, " + what).c_str(), least);
    }

    void measureCapture() {
        QQmlComponent component(
            &engine_, QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/shell/MainWindow.qml")));
        const std::unique_ptr<QObject> window(component.create());
        window->setProperty("launchMode", adminMode);
        show(*window);
        run(AdminBroadcaster::checkDuration + 0.5);
        const auto subscription = state_.didChange.subscribe([this](AppState::Field field) {
            if (field == AppState::Field::activeSongIndex) {
                cursorMoved();
            }
        });
        audio_.setDevices(
            {{1, "Interface", {sampleRate, static_cast<std::uint32_t>(channelCount_)}}});
        state_.ltcManager().setSelectedDeviceId(1);
        state_.ltcManager().startCapturing();
        std::thread device([this] { deliver(); });
        run(1.0);
        measureShare("live screen, channels captured (64: budget 5 %)");
        stop_ = true;
        device.join();
        state_.ltcManager().stopCapturing();
        reportLatencies();
    }

private:
    void show(QObject& window) {
        auto& shown = static_cast<QQuickWindow&>(window);
        QObject::connect(&shown, &QQuickWindow::frameSwapped, [this] { ++framesDrawn_; });
        shown.show();
    }

    static void run(double seconds) {
        QEventLoop loop;  // ending the application's own would close the windows
        QTimer::singleShot(static_cast<int>(seconds * 1000), &loop, &QEventLoop::quit);
        loop.exec();
    }

    void measureShare(const char* what) {
        const double used = processorSeconds();
        framesDrawn_ = 0;
        run(seconds_);
        std::printf("%-50s %6.2f %% of a core, %.1f frames drawn a second\n", what,
                    100.0 * (processorSeconds() - used) / seconds_,
                    static_cast<double>(framesDrawn_) / seconds_);
    }

    void deliver() {
        std::vector<float> signal;
        ltc::LtcEncoder encoder(frameRate, sampleRate);
        ltc::Timecode timecode{10, 0, 0, 0};
        for (int frame = 0; frame < 25 * (seconds_ + 3); ++frame) {
            encoder.appendFrame(timecode, signal);
            timecode = ltc::next(timecode, frameRate);
        }
        std::vector<std::vector<float>> block(channelCount_, std::vector<float>(blockFrames, 0.1F));
        const auto start = SteadyClock::now();
        for (std::size_t position = 0; !stop_ && position + blockFrames <= signal.size();
             position += blockFrames) {
            std::copy_n(signal.begin() + static_cast<std::ptrdiff_t>(position), blockFrames,
                        block[0].begin());
            std::this_thread::sleep_until(
                start +
                std::chrono::microseconds((position + blockFrames) * 1'000'000 / sampleRate));
            deliveredAt_ = SteadyClock::now().time_since_epoch().count();
            audio_.deliver(block);
        }
    }

    void cursorMoved() {
        const SteadyClock::duration delivered(deliveredAt_.load());
        latencies_.push_back(SteadyClock::now().time_since_epoch() - delivered);
    }

    static double milliseconds(SteadyClock::duration duration) {
        return std::chrono::duration<double, std::milli>(duration).count();
    }

    static void report(const char* what, std::vector<SteadyClock::duration> times) {
        std::sort(times.begin(), times.end());
        std::printf("%-50s median %.1f ms, longest %.1f ms\n", what,
                    milliseconds(times[times.size() / 2]), milliseconds(times.back()));
    }

    void reportLatencies() {
        std::sort(latencies_.begin(), latencies_.end());
        if (latencies_.empty()) {
            std::printf("no song was triggered\n");
            return;
        }
        std::printf(
            "block delivered to cursor moved, %zu moves (budget 2 ms): median %.3f ms, "
            "longest %.3f ms; a block lasts %.1f ms\n",
            latencies_.size(), milliseconds(latencies_[latencies_.size() / 2]),
            milliseconds(latencies_.back()), 1000.0 * blockFrames / sampleRate);
    }

    int seconds_;
    std::size_t channelCount_;
    int framesDrawn_ = 0;
    SystemClock clock_;
    QtMainQueue mainQueue_;
    SimulatedPlatform rest_;
    SimulatedAudioInput audio_{mainQueue_};
    Platform platform_{clock_,         mainQueue_,      rest_.background, rest_.preferences,
                       rest_.files,    rest_.panels,    audio_,           rest_.updates,
                       rest_.computer, rest_.stayAwake, rest_.log,        rest_.journal};
    AppState state_;
    ScreenContext context_{state_, platform_};
    QQmlApplicationEngine engine_;
    std::atomic<bool> stop_ = false;
    std::atomic<SteadyClock::rep> deliveredAt_ = 0;
    std::vector<SteadyClock::duration> latencies_;
};

}  // namespace

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const int seconds = argc > 1 ? std::atoi(argv[1]) : 20;
    const int channels = argc > 2 ? std::atoi(argv[2]) : 64;
    const int songs = argc > 3 ? std::atoi(argv[3]) : 60;
    if (seconds < 1 || channels < 1 || songs < 2) {
        std::fprintf(stderr, "usage: bench_screens [SECONDS [CHANNELS [SONGS]]]\n");
        return 2;
    }
    Production production(seconds, static_cast<std::size_t>(channels));
    production.measureAtRest("stage display at rest (budget 1 %)",
                             "qrc:/qt/qml/Tessivo/Display/DisplayWindow.qml");
    production.measureAtRest("live screen at rest", "qrc:/qt/qml/Tessivo/Ui/shell/MainWindow.qml");
    production.measureCapture();
    production.measureStage(songs);
    return 0;
}
