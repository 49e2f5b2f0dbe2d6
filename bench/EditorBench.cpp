// What preparing a long show costs, of songs of five guests: bench_editor [SONGS, 500 if left out];
// and what the list of as many shows does. Every figure includes the drawing of the whole window,
// which is asked for at once instead of at the next frame of a screen. Besides the time that passes
// it tells the least that the processor took, which other programs don't lengthen.

#include <QGuiApplication>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

using namespace tessivo;

namespace {

constexpr int repetitions = 300;

Show longShow(std::size_t songs) {
    Show show = showWithSongs(songs);
    for (Song& song : show.songs) {
        song.ltcTimecode = "10:00:00:00";
        song.duration = 225;
        song.guests.assign(5, {Uuid{}, "Inès Caradec", "HF 2", "Mix 3", "-3 dB"});
        std::ranges::generate(song.guests, [guest = song.guests.front()]() mutable {
            guest.id = Uuid::random();
            return guest;
        });
    }
    return show;
}

/// In milliseconds.
struct Figures {
    std::vector<double> passed;
    std::vector<double> processor;
};

void report(const char* what, Figures figures) {
    std::ranges::sort(figures.passed);
    const auto at = [&](std::size_t percent) {
        return figures.passed[(figures.passed.size() - 1) * percent / 100];
    };
    std::printf("%-48s median %6.2f ms, p99 %6.2f ms, processor %6.3f ms\n", what, at(50), at(99),
                std::ranges::min(figures.processor));
}

double processorMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

/// `prepare` is not measured.
Figures measure(
    QQuickWindow& window, int times, const std::function<void(int)>& act,
    const std::function<void()>& prepare = [] {}) {
    Figures figures;
    for (int i = 0; i < times; ++i) {
        prepare();
        const auto start = std::chrono::steady_clock::now();
        const double used = processorMilliseconds();
        act(i);
        window.grabWindow();
        figures.processor.push_back(processorMilliseconds() - used);
        figures.passed.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    return figures;
}

QQuickItem* withProperty(QQuickItem* item, const char* property) {
    while (item && !item->property(property).isValid()) {
        item = item->parentItem();
    }
    return item;
}

}  // namespace

int main(int argc, char* argv[]) {
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    const int count = argc > 1 ? std::atoi(argv[1]) : 500;
    if (count < 2) {
        std::fprintf(stderr, "usage: bench_editor [SONGS]\n");
        return 2;
    }
    const auto songs = static_cast<std::size_t>(count);
    Screen screen(longShow(songs));
    const auto show = screen.state.activeShowId();
    QQuickWindow& window = *screen.window;

    report("drawing the window and nothing else", measure(window, repetitions, [](int) {}));
    report("opening the show (budget 300 ms)",
           measure(
               window, 5, [&](int) { screen.state.setActiveShowId(show); },
               [&] {
                   screen.state.setActiveShowId(std::nullopt);
                   window.grabWindow();
               }));

    screen.click("Morceau 2");
    report("typing a letter of a title (budget 16 ms)",
           measure(window, repetitions, [&](int) { screen.type("x"); }));
    report("moving a song (budget 16 ms)", measure(window, repetitions, [&](int i) {
               QTest::keyClick(&window, i % 2 ? Qt::Key_Up : Qt::Key_Down, Qt::AltModifier);
           }));
    QQuickItem* list = withProperty(screen.item("Morceau 1"), "contentY");
    const qreal end = list->property("contentHeight").toReal() - list->height() - 120;
    if (end > 0) {
        report("scrolling by 120 pixels (budget 16 ms)", measure(window, repetitions, [&](int) {
                   const qreal at = list->property("contentY").toReal();
                   list->setProperty("contentY", at < end ? at + 120 : 0);
               }));
    }
    report("bringing the first song to the end", measure(window, 5, [&](int) {
               screen.state.moveSong({0}, static_cast<std::ptrdiff_t>(songs));
           }));
    screen.state.importShow(longShow(songs));
    const auto other = screen.state.activeShowId();
    window.grabWindow();
    report("another show in the place of the one shown",
           measure(window, 6, [&](int i) { screen.state.setActiveShowId(i % 2 ? other : show); }));
    Show longTitles = showWithSongs(100);
    for (Song& song : longTitles.songs) {
        song.title = std::string(32'767, 'x');
    }
    screen.state.setActiveShowId(std::nullopt);
    window.grabWindow();
    report("opening 100 songs with titles as long as a cell",
           measure(window, 1, [&](int) { screen.state.importShow(longTitles); }));

    Screen library(std::vector<Show>(songs, showWithSongs(1)));
    report("the list of as many shows",
           measure(
               *library.window, 5, [&](int) { library.state.setActiveShowId(std::nullopt); },
               [&] {
                   library.state.setActiveShowId(library.state.shows()[0].id);
                   library.window->grabWindow();
               }));
    return 0;
}
