#include <QGuiApplication>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>

#include "display/Application.h"
#include "model/AppState.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "support/Shows.h"

using namespace tessivo;

namespace {

/// The whole screen on a simulated computer, with a window that really draws and takes keys.
class Screen {
public:
    explicit Screen(Show show) : state(computer) {
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        setApplication(engine, application);
        engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Tessivo/Ui/MainWindow.qml")));
        window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
        QVERIFY(window);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        click(QStringLiteral("Admin"));
        computer.time.advance(2.0);  // the check of the network, to a tick of the clock
        state.importShow(std::move(show));
        state.jumpTo(0);
        window->grabWindow();  // lays out
    }

    /// Every visible text of a window, in drawing order.
    static QStringList texts(const QQuickWindow* shown) {
        QStringList found;
        collect(shown->contentItem(), found);
        return found;
    }
    QStringList texts() const { return texts(window); }

    /// The visible item whose `text` or accessible name is `text`.
    QQuickItem* item(const QString& text) const { return find(window->contentItem(), text); }

    void click(const QString& text) const {
        QQuickItem* target = item(text);
        QVERIFY2(target, qPrintable(text));
        const QPointF centre = target->mapToScene({target->width() / 2, target->height() / 2});
        QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
    }

    /// Every item below `item`, shown or not, also those that a Repeater made.
    static QList<QPointer<QQuickItem>> items(QQuickItem* item) {
        QList<QPointer<QQuickItem>> found{item};
        for (QQuickItem* child : item->childItems()) {
            found += items(child);
        }
        return found;
    }

    /// The stage window, opened as the operator does.
    QQuickWindow* openStage() const {
        click(QStringLiteral("Ouvrir l'affichage"));
        const auto find = [] {
            for (QWindow* shown : QGuiApplication::topLevelWindows()) {
                if (shown->isVisible() && shown->title() == QStringLiteral("Tessivo — Affichage")) {
                    return qobject_cast<QQuickWindow*>(shown);
                }
            }
            return static_cast<QQuickWindow*>(nullptr);
        };
        [&] { QTRY_VERIFY(find()); }();
        return find();
    }

    SimulatedPlatform computer;
    AppState state;
    Application application{state, computer};
    QQmlApplicationEngine engine;
    QQuickWindow* window = nullptr;

private:
    static void collect(const QQuickItem* item, QStringList& found) {
        if (!item->isVisible() || item->opacity() <= 0) {
            return;
        }
        if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty()) {
            found.append(item->property("text").toString());
        }
        for (const QQuickItem* child : item->childItems()) {
            collect(child, found);
        }
    }
    static QQuickItem* find(QQuickItem* item, const QString& text) {
        if (!item->isVisible()) {
            return nullptr;
        }
        if (item->property("text").toString() == text) {
            return item;
        }
        for (QQuickItem* child : item->childItems()) {
            if (QQuickItem* found = find(child, text)) {
                return found;
            }
        }
        return nullptr;
    }
};

Show concert() {
    Show show = showWithSongs(10);
    show.name = "Concert";
    show.songs[0].duration = 12;
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].guests.push_back({Uuid::random(), "Léa", "HF 2", "Mix 3", "-3"});
    show.songs[0].guests.push_back({Uuid::random(), "", "HF 1", "Mix 1", ""});
    show.songs[1].guests.push_back({Uuid::random(), "Chœurs", "HF 2", "Mix 3", "-3"});
    show.songs[2].ltcTimecode = "";
    return show;
}

}  // namespace

class LiveScreenTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(QStringLiteral("Basic")); }
    void showsTheCurrentSongAndItsNeighbours();
    void announcesTheNextSong();
    void endsWithTheFinishedState();
    void keysActWhateverHasBeenClicked();
    void aHeldKeyCountsOnce();
    void aClickJumpsToAComingSong();
    void capturesFromTheChosenDevice();
    void saysWhyACaptureFailed();
    void menuCommandsNeedAnActiveShow();
    void theStageWindowFollows();
    void aTickRebuildsNothing();
    void f11TogglesFullScreen();
};

void LiveScreenTest::showsTheCurrentSongAndItsNeighbours() {
    Screen screen(concert());
    QStringList texts = screen.texts();
    for (const char* expected :
         {"● En cours — morceau 1/10", "10:00:00:00", "0:12", "Morceau 1", "Léa", "MIC HF 2",
          "IEM Mix 3", "VOL -3", "(sans nom)", "À suivre", "Chœurs — HF 2 · Mix 3 · vol -3",
          "Morceau 5", "1 / 10", "2 morceaux programmés"}) {
        QVERIFY2(texts.contains(QString::fromUtf8(expected)), expected);
    }
    QVERIFY(!texts.contains(QStringLiteral("Précédent")));
    QVERIFY(!texts.contains(QStringLiteral("Morceau 6")));
    QCOMPARE(texts.filter(QStringLiteral("VOL")).size(), 1);

    screen.state.jumpTo(9);
    texts = screen.texts();
    for (const char* expected : {"Précédent", "Morceau 8", "Morceau 9", "Morceau 10",
                                 "Pas de guest sur ce morceau", "10 / 10"}) {
        QVERIFY2(texts.contains(QString::fromUtf8(expected)), expected);
    }
    QVERIFY(!texts.contains(QStringLiteral("À suivre")));
}

void LiveScreenTest::announcesTheNextSong() {
    Screen screen(concert());
    const QQuickItem* row =
        screen.item(QStringLiteral("Aller à ce morceau →"))->parentItem()->parentItem();
    screen.state.jumpTo(0);
    screen.computer.time.advance(1.0);
    QVERIFY(screen.texts().contains(QStringLiteral("0:11")));
    QCOMPARE(row->property("announced").toBool(), false);
    screen.computer.time.advance(1.0);
    QVERIFY(screen.texts().contains(QStringLiteral("0:10")));
    QCOMPARE(row->property("announced").toBool(), true);
}

void LiveScreenTest::endsWithTheFinishedState() {
    Screen screen(concert());
    screen.state.jumpTo(10);
    const QStringList texts = screen.texts();
    for (const char* expected :
         {"● Show terminé", "Fin de la setlist", "Morceau 9", "Morceau 10", "10 / 10"}) {
        QVERIFY2(texts.contains(QString::fromUtf8(expected)), expected);
    }
    QVERIFY(texts.filter(QStringLiteral("En cours")).isEmpty());
}

void LiveScreenTest::keysActWhateverHasBeenClicked() {
    Screen screen(concert());
    qint64 expected = 0;
    for (const char* clicked :
         {"Démarrer la capture", "Follow LTC", "Choisir un périphérique…", "Fichier", "Concert"}) {
        screen.click(QString::fromUtf8(clicked));
        QTest::qWait(5);  // a press of the same moment as the last release would be a repeat
        QTest::keyClick(screen.window, Qt::Key_Space);
        QCOMPARE(screen.state.activeSongIndex(), ++expected);
        QTest::keyClick(screen.window, Qt::Key_Escape);
    }
    QCOMPARE(screen.state.autoAdvanceEnabled(), false);
    QTest::keyClick(screen.window, Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(screen.state.activeSongIndex(), expected - 1);
    QTest::keyClick(screen.window, Qt::Key_Right);
    QTest::keyClick(screen.window, Qt::Key_A);
    QCOMPARE(screen.state.activeSongIndex(), expected - 1);
}

void LiveScreenTest::aHeldKeyCountsOnce() {
    Screen screen(concert());
    const auto send = [&](QEvent::Type type, quint64 timestamp, bool repeat) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "), repeat);
        event.setTimestamp(timestamp);
        QGuiApplication::sendEvent(screen.window, &event);
    };
    send(QEvent::KeyPress, 1000, false);
    for (quint64 time = 1500; time < 2000; time += 40) {
        // Told as repeats, or only by a release and a press of the same moment.
        const bool told = time % 80 == 0;
        send(QEvent::KeyRelease, time, told);
        send(QEvent::KeyPress, time, told);
    }
    QCOMPARE(screen.state.activeSongIndex(), 1);
    send(QEvent::KeyRelease, 2010, false);
    send(QEvent::KeyPress, 2080, false);
    QCOMPARE(screen.state.activeSongIndex(), 2);
}

void LiveScreenTest::aClickJumpsToAComingSong() {
    Screen screen(concert());
    screen.click(QStringLiteral("Morceau 4"));
    QCOMPARE(screen.state.activeSongIndex(), 3);
}

void LiveScreenTest::capturesFromTheChosenDevice() {
    Screen screen(concert());
    screen.computer.audio.setDevices({{7, "Interface", {48000.0, 2}}, {9, "Micro", {44100.0, 1}}});
    LtcManager& manager = screen.state.ltcManager();
    screen.click(QStringLiteral("Démarrer la capture"));
    QTRY_VERIFY(
        screen.texts().contains(QStringLiteral("Choisis d'abord un périphérique d'entrée.")));

    manager.setAvailableInputDevices(manager.fetchInputDevices());
    screen.click(QStringLiteral("Choisir un périphérique…"));
    QTRY_VERIFY(screen.item(QStringLiteral("Micro")));
    screen.click(QStringLiteral("Micro"));
    QCOMPARE(manager.selectedDeviceId(), std::optional<AudioDeviceId>(9));
    QVERIFY(!manager.isCapturing());

    screen.click(QStringLiteral("Démarrer la capture"));
    QVERIFY(manager.isCapturing());
    QVERIFY(screen.texts().contains(QStringLiteral("Arrêter la capture")));
    QVERIFY(!screen.texts().contains(QStringLiteral("Choisis d'abord un périphérique d'entrée.")));

    screen.click(QStringLiteral("Micro"));
    QTRY_VERIFY(screen.item(QStringLiteral("Interface")));
    screen.click(QStringLiteral("Interface"));
    QVERIFY(manager.isCapturing());
    QCOMPARE(manager.selectedDeviceId(), std::optional<AudioDeviceId>(7));
}

void LiveScreenTest::saysWhyACaptureFailed() {
    Screen screen(concert());
    screen.state.ltcManager().setSelectedDeviceId(12345);
    screen.click(QStringLiteral("Démarrer la capture"));
    QVERIFY(!screen.state.ltcManager().isCapturing());
    QVERIFY(!screen.texts()
                 .filter(QStringLiteral("Échec assignation du périphérique (status "))
                 .isEmpty());
}

void LiveScreenTest::menuCommandsNeedAnActiveShow() {
    Screen screen(concert());
    screen.computer.panels.answers = {"/concert.tessivo"};
    QTest::keyClick(screen.window, Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE(screen.computer.panels.saveRequests.size(), 1U);
    screen.state.setActiveShowId(std::nullopt);
    QTest::keyClick(screen.window, Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(screen.computer.panels.saveRequests.size(), 1U);
    QVERIFY(screen.texts().contains(QStringLiteral("Importer un conducteur")));

    screen.computer.panels.answers = {"/concert.tessivo"};
    QTest::keyClick(screen.window, Qt::Key_O, Qt::ControlModifier);
    QTRY_VERIFY(screen.texts().contains(QStringLiteral("● En cours — morceau 1/10")));
}

void LiveScreenTest::theStageWindowFollows() {
    Screen screen(concert());
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    QVERIFY(stage->width() >= 900 && stage->height() >= 560);
    QVERIFY(Screen::texts(stage).contains(QStringLiteral("EN COURS")));
    QVERIFY(Screen::texts(stage).contains(QStringLiteral("Léa")));

    QTest::keyClick(stage, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 1);
    QVERIFY(Screen::texts(stage).contains(QStringLiteral("Morceau 2")));
    screen.state.jumpTo(10);
    QTRY_VERIFY(Screen::texts(stage).contains(QStringLiteral("Merci !")));
}

void LiveScreenTest::aTickRebuildsNothing() {
    Screen screen(concert());
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    const auto everyItem = [&] {
        return Screen::items(screen.window->contentItem()) + Screen::items(stage->contentItem());
    };
    // From here on nothing turns urgent, which would animate.
    screen.computer.time.advance(3.0);
    QTest::qWait(400);
    const QList<QPointer<QQuickItem>> before = everyItem();
    QVERIFY(screen.texts().contains(QStringLiteral("0:09")));
    screen.computer.time.advance(5.0);
    QVERIFY(screen.texts().contains(QStringLiteral("0:04")));
    QVERIFY(Screen::texts(stage).contains(QStringLiteral("0:04")));
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(everyItem(), before);
}

void LiveScreenTest::f11TogglesFullScreen() {
    Screen screen(concert());
    QTest::keyClick(screen.window, Qt::Key_F11);
    QTRY_COMPARE(screen.window->visibility(), QWindow::FullScreen);
    QTest::keyClick(screen.window, Qt::Key_F11);
    QTRY_COMPARE(screen.window->visibility(), QWindow::Windowed);
}

QTEST_MAIN(LiveScreenTest)
#include "LiveScreenTest.moc"
