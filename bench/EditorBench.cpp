// What preparing a long show costs: 500 songs of five guests. Every figure includes the drawing of
// the whole window, which is asked for at once instead of at the next frame of a screen.

#include <QGuiApplication>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

using namespace tessivo;

namespace {

constexpr int repetitions = 300;

Show longShow() {
    Show show = showWithSongs(500);
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

void report(const char* what, std::vector<double> milliseconds) {
    std::ranges::sort(milliseconds);
    const auto at = [&](std::size_t percent) {
        return milliseconds[(milliseconds.size() - 1) * percent / 100];
    };
    std::printf("%-48s median %6.2f ms, p99 %6.2f ms\n", what, at(50), at(99));
}

double measure(QQuickWindow& window, const std::function<void()>& act) {
    const auto start = std::chrono::steady_clock::now();
    act();
    window.grabWindow();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

std::vector<double> measureAll(QQuickWindow& window, const std::function<void(int)>& act) {
    std::vector<double> figures;
    for (int i = 0; i < repetitions; ++i) {
        figures.push_back(measure(window, [&] { act(i); }));
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
    Screen screen(longShow());
    const auto show = screen.state.activeShowId();
    QQuickWindow& window = *screen.window;

    report("drawing the window and nothing else", measureAll(window, [](int) {}));
    screen.state.setActiveShowId(std::nullopt);
    window.grabWindow();
    report("opening the show (budget 300 ms)",
           {measure(window, [&] { screen.state.setActiveShowId(show); })});

    screen.click("Morceau 2");
    report("typing a letter of a title (budget 16 ms)",
           measureAll(window, [&](int) { screen.type("x"); }));
    report("moving a song (budget 16 ms)", measureAll(window, [&](int i) {
               QTest::keyClick(&window, i % 2 ? Qt::Key_Up : Qt::Key_Down, Qt::AltModifier);
           }));
    QQuickItem* list = withProperty(screen.item("Morceau 1"), "contentY");
    report("scrolling by 120 pixels (budget 16 ms)", measureAll(window, [&](int) {
               list->setProperty("contentY", list->property("contentY").toReal() + 120);
           }));
    Show longTitles = showWithSongs(100);
    for (Song& song : longTitles.songs) {
        song.title = std::string(32'767, 'x');
    }
    screen.state.setActiveShowId(std::nullopt);
    window.grabWindow();
    report("opening 100 songs with titles as long as a cell",
           {measure(window, [&] { screen.state.importShow(longTitles); })});
    return 0;
}
