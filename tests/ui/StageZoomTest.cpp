#include <QFontMetricsF>
#include <QQuickStyle>
#include <QScreen>
#include <QTest>

#include "kit/ScreenZooms.h"
#include "support/Screen.h"
#include "support/Shows.h"

#include <cmath>
#include <string>

using namespace tessivo;

namespace {

/// Two songs with the same guests, of whom one has a name longer than any screen.
Show crowd(int guests) {
    Show show = showWithSongs(2);
    for (Song& song : show.songs) {
        song.duration = 235;
        song.guests.clear();
        for (int i = 1; i <= guests; ++i) {
            const std::string name = i == 2 ? std::string(300, 'N') : "Inès Caradec";
            song.guests.push_back({Uuid::random(), name, "HF " + std::to_string(i),
                                   "Mix " + std::to_string(i), i % 2 == 0 ? "-3 dB" : ""});
        }
    }
    return show;
}

QRectF placeOf(const QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

/// Every text that is seen, with its place in the window.
QList<QQuickItem*> textsSeen(const QQuickWindow* window) {
    QList<QQuickItem*> seen;
    for (const auto& item : Screen::items(window->contentItem())) {
        if (item->isVisible() && item->opacity() > 0 && item->property("font").isValid() &&
            !item->property("text").toString().isEmpty()) {
            seen.append(item);
        }
    }
    return seen;
}

}  // namespace

class StageZoomTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void fittedAllThatMattersIsReadFromFar_data();
    void fittedAllThatMattersIsReadFromFar();
    void eachScreenKeepsItsZoom();
};

void StageZoomTest::fittedAllThatMattersIsReadFromFar_data() {
    QTest::addColumn<int>("guests");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("millimetres");  // of a microphone's capitals on 55 inches
    for (const QSize size : {QSize(1280, 720), QSize(1920, 1080), QSize(900, 1200)}) {
        const bool isWide = size.width() > size.height();
        for (const auto& [guests, millimetres] :
             {std::pair{0, 0}, {1, 40}, {3, 40}, {8, 25}, {12, 20}, {40, 0}}) {
            QTest::addRow("%d guests, %d wide", guests, size.width())
                << guests << size << (isWide ? millimetres : 0);
        }
    }
}

void StageZoomTest::fittedAllThatMattersIsReadFromFar() {
    QFETCH(const int, guests);
    QFETCH(const QSize, size);
    QFETCH(const int, millimetres);
    Screen screen(crowd(guests));
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    stage->resize(size);
    QTest::keyClick(stage, Qt::Key_F, Qt::ControlModifier);
    stage->grabWindow();

    const QStringList texts = Screen::texts(stage);
    QVERIFY(texts.contains("Morceau 1"));
    QVERIFY(texts.contains("3:55"));
    QVERIFY(texts.contains("2  Morceau 2"));
    for (int i = 1; i <= guests; ++i) {
        for (const char* label : {"HF ", "Mix "}) {
            const auto* text = Screen::find(stage, (label + std::to_string(i)).c_str());
            QVERIFY(text && !text->property("truncated").toBool());
        }
    }
    const QList<QQuickItem*> seen = textsSeen(stage);
    for (const QQuickItem* text : seen) {
        const QRectF place = placeOf(text).adjusted(1, 1, -1, -1);
        QVERIFY2(QRectF(QPointF(), size).contains(place),
                 qPrintable(text->property("text").toString()));
        for (const QQuickItem* other : seen) {
            QVERIFY2(other == text || !place.intersects(placeOf(other).adjusted(1, 1, -1, -1)),
                     qPrintable(text->property("text").toString() + " over " +
                                other->property("text").toString()));
        }
    }
    if (millimetres > 0) {
        const QQuickItem* microphone = Screen::find(stage, "HF 1");
        const double capital =
            QFontMetricsF(microphone->property("font").value<QFont>()).capHeight();
        const double screenHeight = 55 * 25.4 * 9 / std::hypot(16, 9);
        const double height =
            microphone->mapRectToScene(QRectF(0, 0, 1, capital)).height() / size.height();
        QCOMPARE_GE(std::round(height * screenHeight), millimetres);
    }
}

void StageZoomTest::eachScreenKeepsItsZoom() {
    Screen screen(crowd(3));
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    const auto kept = [&](const QString& name) {
        AppState later(screen.computer);
        return ScreenZooms(later.choices()).zoom("stage", name);
    };
    const auto heightOfTitle = [&] {
        stage->grabWindow();
        return placeOf(Screen::find(stage, "Morceau 1")).height();
    };
    const QString here = stage->screen()->name();
    const double normal = heightOfTitle();
    QCOMPARE(kept(here), 1.0);
    QTest::keyClick(stage, Qt::Key_Plus, Qt::ControlModifier);
    QTRY_VERIFY(heightOfTitle() > normal);
    const double larger = kept(here);
    QVERIFY(larger > 1.0);
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(stage, Qt::Key_Minus, Qt::ControlModifier);
    }
    QCOMPARE(kept(here), ScreenZooms::smallest);
    QTRY_VERIFY(heightOfTitle() < normal);
    QTest::keyClick(stage, Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(kept(here), ScreenZooms::fit);
    QTest::keyClick(stage, Qt::Key_0, Qt::ControlModifier);
    QTRY_COMPARE(heightOfTitle(), normal);

    ScreenZooms zooms(screen.state.choices());
    zooms.keep("stage", "../HDMI 1", 2.0);
    QCOMPARE(kept("../HDMI 1"), 2.0);
    QCOMPARE(kept(here), 1.0);
    for (const char* wrong : {"", "nan", "-1", "0.1", "1e9", "x"}) {
        screen.computer.preferences.values["zoom_v1_stage_other"] = wrong;
        QCOMPARE(kept("other"), 1.0);
    }
}

QTEST_MAIN(StageZoomTest)
#include "StageZoomTest.moc"
