#include <QQuickStyle>
#include <QScreen>
#include <QTest>
#include <QTimeZone>

#include "live/ShowClock.h"
#include "ltc/LtcEncoder.h"
#include "support/RawAdmin.h"
#include "support/Screen.h"
#include "support/Shows.h"
#include "sync/AdminBroadcaster.h"
#include "sync/ReceiverClient.h"
#include "timecode/LtcManager.h"
#include "ui/shell/ShellViewModel.h"

#include <algorithm>
#include <optional>
#include <string>

using namespace tessivo;

namespace {

/// The main window on its live tab.
class LiveScreen : public Screen {
public:
    explicit LiveScreen(Show show) : Screen(std::move(show)) { click("Vue live"); }
};

}  // namespace

class LiveScreenTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void showsTheCurrentSongAndItsNeighbours();
    void announcesTheNextSong();
    void tellsWhatChangesHandsAndTheHour();
    void thePassagesFollow();
    void keysActWhateverHasBeenClicked();
    void aHeldKeyCountsOnce();
    void aClickJumpsToAComingSong();
    void smallWindowsShowTheCurrentSongAndTheAnnouncedOne();
    void capturesFromTheChosenDevice();
    void tellsHowTheTimecodeDoesAndOffersWhatHelps();
    void menuCommandsNeedAnActiveShow();
    void aRefusedFileSaysWhy();
    void tellsWhoFollowsAndWhoElseLeads();
    void tellsThatNothingIsKeptAndWhatIsNewer();
    void whatIsWatchedKeepsTheComputerAwake();
    void theStageWindowFollows();
    void allGuestsOfACrowdedSongAreInView();
    void aTickRebuildsNothing();
    void f11TogglesFullScreen();
    void aLockedScreenOpensWhenTheKeyIsHeld();
    void aCrashedEveningComesBack_data();
    void aCrashedEveningComesBack();
};

void LiveScreenTest::showsTheCurrentSongAndItsNeighbours() {
    LiveScreen screen(concert());
    QStringList texts = screen.texts();
    for (const char* expected :
         {"● En cours — morceau 1/10", "10:00:00:00", "0:12", "Morceau 1", "Léa", "MIC HF 2",
          "IEM Mix 3", "VOL -3", "(sans nom)", "À suivre", "Chœurs — HF 2 · Mix 3 · vol -3",
          "Morceau 5", "1 / 10", "2 morceaux programmés"}) {
        QVERIFY2(texts.contains(expected), expected);
    }
    QVERIFY(!texts.contains("Précédent"));
    QVERIFY(!texts.contains("Morceau 6"));
    QCOMPARE(texts.filter("VOL").size(), 1);

    screen.state.jumpTo(9);
    texts = screen.texts();
    for (const char* expected : {"Précédent", "Morceau 8", "Morceau 9", "Morceau 10",
                                 "Pas de guest sur ce morceau", "10 / 10"}) {
        QVERIFY2(texts.contains(expected), expected);
    }
    QVERIFY(!texts.contains("À suivre"));

    screen.state.jumpTo(10);
    texts = screen.texts();
    for (const char* expected :
         {"● Show terminé", "Fin de la setlist", "Morceau 9", "Morceau 10", "10 / 10"}) {
        QVERIFY2(texts.contains(expected), expected);
    }
    QVERIFY(texts.filter("En cours").isEmpty());
}

void LiveScreenTest::announcesTheNextSong() {
    LiveScreen screen(concert());
    const QQuickItem* row = screen.item("Aller à ce morceau →")->parentItem()->parentItem();
    screen.state.jumpTo(0);
    screen.computer.time.advance(1.0);
    QVERIFY(screen.shows("0:11"));
    QCOMPARE(row->property("announced").toBool(), false);
    screen.computer.time.advance(1.0);
    QVERIFY(screen.shows("0:10"));
    QCOMPARE(row->property("announced").toBool(), true);
}

void LiveScreenTest::tellsWhatChangesHandsAndTheHour() {
    Show show = concert();
    show.songs[1].duration = 3600;
    LiveScreen screen(show);
    QVERIFY(
        screen.shows("HF 2 (hors liste)\u00A0: Léa → Chœurs, serré   ·   "
                     "IEM Mix 3 (hors liste)\u00A0: Léa → Chœurs, serré"));
    const auto hour = [&](double later, const char* format) {
        const Instant then = screen.computer.time.now() + later;
        return QDateTime(QDate(2001, 1, 1), QTime(), QTimeZone::utc())
            .addMSecs(static_cast<qint64>(then.secondsSince2001 * 1000.0))
            .toLocalTime()
            .toString(format);
    };
    const std::string text = plannedEndText(hour(3612.0, "HH:mm").toStdString(), 8);
    QVERIFY2(screen.shows(text.c_str()), qPrintable(screen.texts().join('|')));
    screen.computer.time.advance(1.0);
    QVERIFY(screen.shows(qPrintable(hour(0.0, "HH:mm:ss"))));
    screen.state.jumpTo(-1);
    QVERIFY(!screen.texts().filter("Léa, premier").isEmpty());
    screen.state.jumpTo(2);
    QVERIFY(screen.texts().filter("→ Chœurs").isEmpty());
    QVERIFY(screen.texts().filter("Fin prévue").isEmpty());
}

void LiveScreenTest::thePassagesFollow() {
    LiveScreen screen(concert());
    screen.press(Qt::Key_P, Qt::ControlModifier);
    QQuickWindow* passages = Screen::windowTitled("Tessivo — Passages");
    QVERIFY(passages);
    passages->grabWindow();
    QVERIFY(Screen::texts(passages).contains("serré"));
    const auto current = [&] {
        QStringList lit;
        for (const auto& item : Screen::items(passages->contentItem())) {
            if (item->property("isCurrent").toBool()) {
                lit.append(item->property("index").toString());
            }
        }
        return lit.join(' ');
    };
    QCOMPARE(current(), "0");
    screen.state.jumpTo(1);
    QTest::keyClick(passages, Qt::Key_Space);
    QCOMPARE(current(), "2");
    const Song& next = screen.state.activeShow()->songs[1];
    screen.state.updateGuest(next.id, next.guests[0].id, "Léa", std::nullopt, std::nullopt);
    QVERIFY(!Screen::texts(passages).contains("serré"));

    const qreal width = Screen::find(passages, "Morceau 1")->mapRectToScene({0, 0, 100, 1}).width();
    QTest::keyClick(passages, Qt::Key_Plus, Qt::ControlModifier);
    QVERIFY(Screen::find(passages, "Morceau 1")->mapRectToScene({0, 0, 100, 1}).width() > width);
    const QList<QPointer<QQuickItem>> before = Screen::items(passages->contentItem());
    screen.computer.time.advance(3.0);
    QCOMPARE(Screen::items(passages->contentItem()), before);
}

void LiveScreenTest::keysActWhateverHasBeenClicked() {
    LiveScreen screen(concert());
    qint64 expected = 0;
    const auto stepsOnSpace = [&] {
        const qint64 before = screen.state.activeSongIndex();
        QTest::qWait(5);  // a press of the same moment as the last release would be a repeat
        screen.press(Qt::Key_Space);
        return screen.state.activeSongIndex() - before;
    };
    for (const char* clicked : {"Démarrer la capture", "Follow LTC", "Vue live"}) {
        screen.click(clicked);
        QCOMPARE(stepsOnSpace(), 1);
        ++expected;
    }
    // What lies over the screen has the keys until it is gone.
    for (const char* opened : {"Concert", "Fichier", "Choisir un périphérique…"}) {
        screen.click(opened);
        screen.press(Qt::Key_Left);
        QCOMPARE(screen.state.activeSongIndex(), expected);
        QCOMPARE(stepsOnSpace(), 0);
        screen.press(Qt::Key_Escape);
        QVERIFY(QTest::qWaitFor([&] { return stepsOnSpace() == 1; }));
        ++expected;
    }
    screen.press(Qt::Key_F10);
    QCOMPARE(stepsOnSpace(), 0);
    screen.press(Qt::Key_Escape);
    QVERIFY(QTest::qWaitFor([&] { return stepsOnSpace() == 1; }));
    ++expected;
    QCOMPARE(screen.state.autoAdvanceEnabled(), false);
    screen.press(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(screen.state.activeSongIndex(), expected - 1);
    screen.press(Qt::Key_Right);
    screen.press(Qt::Key_A);
    QCOMPARE(screen.state.activeSongIndex(), expected - 1);
}

void LiveScreenTest::aHeldKeyCountsOnce() {
    LiveScreen screen(concert());
    const auto send = [&](QEvent::Type type, quint64 timestamp, bool repeat) {
        QKeyEvent event(type, Qt::Key_Space, Qt::NoModifier, " ", repeat);
        event.setTimestamp(timestamp);
        QGuiApplication::sendEvent(screen.window, &event);
    };
    send(QEvent::KeyPress, 1000, false);
    for (quint64 time = 1500; time < 2000; time += 40) {
        // Told as repeats, or only by a release and a press of the same moment.
        const bool told = time % 80 == 0;
        if (!told) {
            send(QEvent::KeyRelease, time, false);
        }
        send(QEvent::KeyPress, time, told);
    }
    QCOMPARE(screen.state.activeSongIndex(), 1);
    send(QEvent::KeyRelease, 2010, false);
    send(QEvent::KeyPress, 2080, false);
    QCOMPARE(screen.state.activeSongIndex(), 2);
}

void LiveScreenTest::aClickJumpsToAComingSong() {
    LiveScreen screen(concert());
    // The second half of a double click meets another row.
    const QPoint place = Screen::centreOf(screen.item("Morceau 4"));
    screen.click("Morceau 4");
    screen.layOut();
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, place);
    QCOMPARE(screen.state.activeSongIndex(), 3);
}

void LiveScreenTest::smallWindowsShowTheCurrentSongAndTheAnnouncedOne() {
    Show show = concert();
    show.songs[1].duration = 12;
    for (const std::size_t crowded : {1U, 6U}) {
        for (int i = 0; i < 12; ++i) {
            show.songs[crowded].guests.push_back(
                {Uuid::random(), "Inès Caradec", "HF 2", "Mix 3", "-3"});
        }
        show.songs[crowded].guests.push_back(
            {Uuid::random(), "La dernière", "HF 2", "Mix 3", "-3"});
    }
    LiveScreen screen(show);
    const auto inView = [&](const QString& text) {
        QQuickItem* item = screen.item(text.toUtf8().constData());
        const QQuickItem* view = Screen::around(item, "contentY");
        const qreal y = item->mapToItem(view, {}).y();
        return y >= 0 && y + item->height() <= view->height();
    };
    for (const QSize size : {QSize(720, 544), QSize(900, 600), QSize(1180, 680)}) {
        screen.window->resize(size);
        screen.layOut();
        for (const std::size_t song : {1U, 0U, 5U, 6U, 5U, 1U}) {
            screen.state.jumpTo(static_cast<std::int64_t>(song));
            screen.layOut();  // one frame
            QVERIFY(inView(QStringLiteral("● En cours — morceau %1/10").arg(song + 1)));
            QVERIFY(inView(song % 5 == 1 ? "La dernière" : show.songs[song].title.c_str()));
        }
        screen.computer.time.advance(2.0);
        QTRY_VERIFY(inView("Morceau 3"));
        QVERIFY(inView("0:10"));
    }
}

void LiveScreenTest::capturesFromTheChosenDevice() {
    LiveScreen screen(concert());
    screen.computer.audio.setDevices({{7, "Interface", {48000.0, 2}}, {9, "Micro", {44100.0, 1}}});
    LtcManager& manager = screen.state.ltcManager();
    screen.click("Démarrer la capture");
    QTRY_VERIFY(screen.shows("Choisis d'abord un périphérique d'entrée."));

    screen.click("Actualiser la liste des entrées audio");
    QVERIFY(screen.shows("Recherche des entrées audio…"));
    screen.computer.time.drain();
    screen.click("Choisir un périphérique…");
    QTRY_VERIFY(screen.item("Micro"));
    screen.click("Micro");
    QCOMPARE(manager.selectedDeviceId(), std::optional<AudioDeviceId>(9));
    QVERIFY(!manager.isCapturing());

    screen.click("Démarrer la capture");
    QVERIFY(manager.isCapturing());
    QVERIFY(screen.shows("Arrêter la capture"));
    QVERIFY(!screen.shows("Choisis d'abord un périphérique d'entrée."));

    screen.computer.time.drain();
    screen.computer.audio.deliver({std::vector<float>(4410)}, {.blocks = 1, .frames = 4410});
    screen.computer.time.drain();
    QVERIFY(screen.shows("Son perdu : l'ordinateur n'a pas suivi"));
    const auto items = screen.window->findChildren<QQuickItem*>();
    const auto meter = std::ranges::find_if(
        items, [](const QQuickItem* item) { return item->property("lively").isValid(); });
    for (const float level : {0.1F, 0.2F}) {
        screen.computer.audio.deliver({std::vector<float>(4410, level)});
        screen.computer.time.drain();
        QTRY_COMPARE((*meter)->property("fill").toDouble(), 4.0 * static_cast<double>(level));
    }

    for (const char* choice : {"Choisir un périphérique…", "Interface"}) {
        screen.click("Micro");
        QTRY_VERIFY(screen.item(choice));
        screen.click(choice);
    }
    QVERIFY(manager.isCapturing());
    QCOMPARE(manager.selectedDeviceId(), std::optional<AudioDeviceId>(7));
    QVERIFY(!screen.shows("Son perdu : l'ordinateur n'a pas suivi"));
    screen.computer.audio.setDevices({});
    screen.click("Actualiser la liste des entrées audio");
    screen.computer.time.drain();
    QVERIFY(screen.shows("Choisir un périphérique…"));
}

void LiveScreenTest::tellsHowTheTimecodeDoesAndOffersWhatHelps() {
    LiveScreen screen(concert());
    screen.computer.audio.setDevices({{7, "Interface", {48000.0, 2}}});
    LtcManager& manager = screen.state.ltcManager();
    manager.setSelectedDeviceId(7);
    screen.click("Démarrer la capture");
    const ltc::FrameRate rate = ltc::parseFrameRate("29.97df").value();
    ltc::LtcEncoder encoder(rate, 48'000);
    ltc::Timecode timecode{1, 0, 0, 0};
    const auto play = [&](int frames, int missing, float level = 0.5F, float offset = 0.0F) {
        for (int i = 0; i < frames; ++i, timecode = next(timecode, rate)) {
            std::vector<float> signal;
            encoder.appendFrame(timecode, signal);
            for (float& sample : signal) {
                sample = i % 10 < missing ? 0.0F : sample * level + offset;
            }
            screen.computer.audio.deliver(std::vector{std::vector<float>(signal.size()), signal});
            screen.computer.time.drain();
        }
    };
    play(60, 0);
    QTRY_VERIFY(screen.shows("LTC sur le canal 2."));
    QVERIFY(screen.shows("Canal 1"));
    screen.click("Décoder le canal 2");
    const QQuickItem* meters = screen.item("Canal 2")->parentItem()->childItems().at(1);
    for (const auto& [x, text] : {std::pair{2.0, "Canal 1"}, {10.0, "Canal 2"}}) {
        QTest::mouseClick(screen.window, Qt::LeftButton, {}, meters->mapToScene({x, 9}).toPoint());
        QVERIFY2(screen.shows(text), text);
    }
    play(50, 0);
    QTRY_VERIFY(screen.shows("29,97 DF · 100 % · 45 sur 45 images · en marche · -6 dBFS"));
    QTRY_VERIFY(screen.shows(manager.currentTimecodeDisplay().c_str()));
    QTRY_VERIFY(
        screen.shows("Timecode à 29,97 DF : les morceaux partent jusqu'à 5 images trop tôt."));
    screen.click("Compter à 29,97 DF");
    QVERIFY(manager.countsThirty());
    const char* const warning = "Cette ligne pourrait faire sauter un morceau.";
    play(150, 2);
    QTRY_VERIFY(screen.shows(warning));
    screen.click("Ignorer");
    QVERIFY(!manager.isCareful());
    // It is offered again with each capture, and no longer once it was done elsewhere.
    screen.click("Arrêter la capture");
    screen.click("Démarrer la capture");
    play(150, 0, 0.1F, 0.3F);
    QTRY_VERIFY(screen.shows(warning));
    screen.click("Suivi prudent");
    QVERIFY(manager.isCareful());
    play(10, 0);
    QTRY_VERIFY(!screen.shows(warning));
    screen.click("Arrêter la capture");
    QVERIFY(!screen.shows("Canal 2"));
}

void LiveScreenTest::menuCommandsNeedAnActiveShow() {
    LiveScreen screen(concert());
    screen.computer.panels.answers = {"/concert.tessivo"};
    screen.press(Qt::Key_S, Qt::ControlModifier);
    QTRY_COMPARE(screen.computer.panels.saveRequests.size(), 1U);
    screen.state.setActiveShowId(std::nullopt);
    screen.press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(screen.computer.panels.saveRequests.size(), 1U);
    QVERIFY(screen.shows("Importer un conducteur"));

    screen.computer.panels.answers = {"/concert.tessivo"};
    screen.press(Qt::Key_O, Qt::ControlModifier);
    QTRY_VERIFY(screen.item("Morceau 1"));
}

void LiveScreenTest::aRefusedFileSaysWhy() {
    LiveScreen screen(concert());
    screen.application.fileRequested.emit("/absent.tessivo");
    QTRY_VERIFY(
        screen.shows("Ce fichier n'est pas un show que Tessivo peut lire\u00A0: /absent.tessivo"));
    screen.state.setLocked(true);
    screen.application.fileRequested.emit("/absent.tessivo");
    QTRY_VERIFY(screen.shows("La vue live est verrouillée\u00A0: aucun autre show n'est ouvert."));
    screen.state.setLocked(false);
    screen.computer.files.contents["/gros.tessivo"] = std::string(33 << 20, ' ');
    screen.computer.panels.answers = {"/gros.tessivo"};
    screen.press(Qt::Key_Escape);
    screen.press(Qt::Key_O, Qt::ControlModifier);
    QTRY_VERIFY(!screen.texts().filter("il dépasse les 32 Mo").isEmpty());
    screen.press(Qt::Key_Escape);
    QTRY_VERIFY(screen.texts().filter("il dépasse les 32 Mo").isEmpty());
    screen.application.fileRequested.emit("/gros.tessivo");
    QTRY_VERIFY(!screen.texts().filter("il dépasse les 32 Mo").isEmpty());
}

void LiveScreenTest::tellsWhoFollowsAndWhoElseLeads() {
    LiveScreen screen(concert());
    SimulatedMainQueue& time = screen.computer.time;
    ReceiverClient station(screen.computer.network.addComputer("Plateau"), time,
                           screen.computer.background);
    QVERIFY(screen.shows("Aucun poste ne suit"));
    const auto tells = [&](const char* trouble) {
        time.advance(3.0);
        return !screen.texts().filter(trouble).isEmpty();
    };
    station.start();
    QVERIFY(tells("1 poste suit"));
    station.stop();
    QVERIFY(tells("1 de moins depuis"));
    station.start();
    QVERIFY(!tells("1 de moins depuis"));
    std::optional<test::RawAdmin> rival(screen.computer.network.addComputer("Console"));
    QVERIFY(tells("Un autre admin conduit aussi\u00A0: Console"));
    rival.reset();
    QVERIFY(!tells("Un autre admin conduit aussi"));
}

void LiveScreenTest::tellsThatNothingIsKeptAndWhatIsNewer() {
    LiveScreen screen(concert());
    const auto tells = [&](const char* text) { return !screen.texts().filter(text).isEmpty(); };
    QVERIFY(!tells("ne seront pas conservées"));
    screen.computer.preferences.isFull = true;
    screen.state.goNext();
    QVERIFY(tells("ne seront pas conservées"));
    screen.computer.updates.latestVersion = "9.9";
    const int shell = qmlTypeId("Tessivo.Ui", 1, 0, "ShellViewModel");
    screen.engine.singletonInstance<ShellViewModel*>(shell)->checkForUpdates();
    screen.computer.time.drain();
    QTRY_VERIFY(tells("La version 9.9 est disponible"));
}

void LiveScreenTest::whatIsWatchedKeepsTheComputerAwake() {
    LiveScreen screen(concert());
    QVERIFY(screen.computer.stayAwake.isAwake);
    screen.click("Setlist");
    QVERIFY(!screen.computer.stayAwake.isAwake);
    QQuickWindow* stage = screen.openStage();
    QVERIFY(screen.computer.stayAwake.isAwake);
    screen.click("Vue live");
    stage->close();
    QCoreApplication::processEvents();
    QVERIFY(screen.computer.stayAwake.isAwake);
    screen.click("Retour à tous les shows");
    QVERIFY(!screen.computer.stayAwake.isAwake);
}

void LiveScreenTest::theStageWindowFollows() {
    LiveScreen screen(concert());
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    QVERIFY(stage->width() >= 900 && stage->height() >= 560);
    QVERIFY(Screen::texts(stage).contains("EN COURS"));
    QVERIFY(Screen::texts(stage).contains("Léa"));
    const auto rowOfNext = [&] {
        return Screen::around(Screen::find(stage, "À SUIVRE"), "urgent");
    };
    const QColor resting =
        stage->grabWindow().pixelColor(rowOfNext()->mapToScene({9, 9}).toPoint());

    QTest::keyClick(stage, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 1);
    QVERIFY(Screen::texts(stage).contains("Morceau 2"));
    // A song that becomes the next one takes its colour at once: a fade would flash like an alarm.
    QCOMPARE(stage->grabWindow().pixelColor(rowOfNext()->mapToScene({9, 9}).toPoint()), resting);
    screen.state.jumpTo(4);  // those who were past leave
    screen.state.jumpTo(10);
    QTRY_VERIFY(Screen::texts(stage).contains("Merci !"));
    // It keeps its show when the operator leaves that.
    screen.state.setActiveShowId(std::nullopt);
    screen.state.jumpTo(0);
    QTRY_VERIFY(Screen::texts(stage).contains("Morceau 1"));
    Show other = showWithSongs(1);
    other.songs[0].title = "Autre";
    screen.state.importShow(other);
    screen.openStage();
    QTRY_VERIFY(Screen::texts(stage).contains("Autre"));
}

void LiveScreenTest::allGuestsOfACrowdedSongAreInView() {
    const char* const title = "Symphonie interminable pour voix, chœurs et machines";
    const struct {
        int guests;
        QSize size;
        const char* title;
    } rows[] = {{10, {900, 560}, title},
                {10, {900, 560}, "Fin"},
                {16, {900, 560}, title},
                {10, {1280, 720}, title}};
    for (const auto& row : rows) {
        Show show = concert();
        show.songs[2].title = row.title;
        show.songs[2].guests.assign(static_cast<std::size_t>(row.guests),
                                    {Uuid::random(), "Maximilienne-Apolline de La Roche",
                                     "HF 12 (secours)", "Mix 12 stéréo", "-12 dB"});
        Screen screen(show);
        QQuickWindow* stage = screen.openStage();
        QVERIFY(stage);
        stage->resize(row.size);
        screen.state.jumpTo(2);
        const auto bottoms = [stage](const QString& type) {
            QList<qreal> found;
            for (const auto& item : Screen::items(stage->contentItem())) {
                if (QString::fromLatin1(item->metaObject()->className()).startsWith(type)) {
                    found.append(item->mapToScene({0, item->height()}).y());
                }
            }
            return found;
        };
        const auto lowestGuest = [&] {
            const QList<qreal> found = bottoms("GuestCard");
            return found.size() == row.guests ? *std::ranges::max_element(found) : 1e9;
        };
        // Below the cards there is room for the start of the next song and the footer.
        QTRY_VERIFY(lowestGuest() < row.size.height() - 100);
        QCOMPARE(bottoms("CurrentSongCard").size(), 1);
        QTRY_VERIFY(lowestGuest() < bottoms("CurrentSongCard").first());
    }
}

void LiveScreenTest::aTickRebuildsNothing() {
    LiveScreen screen(concert());
    QQuickWindow* stage = screen.openStage();
    QVERIFY(stage);
    const auto everyItem = [&] {
        return Screen::items(screen.window->contentItem()) + Screen::items(stage->contentItem());
    };
    // From here on nothing turns urgent, which would animate.
    screen.computer.time.advance(3.0);
    QTest::qWait(400);
    const QList<QPointer<QQuickItem>> before = everyItem();
    QVERIFY(screen.shows("0:09"));
    screen.computer.time.advance(5.0);
    QVERIFY(screen.shows("0:04"));
    QVERIFY(Screen::texts(stage).contains("0:04"));
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(everyItem(), before);
}

void LiveScreenTest::aLockedScreenOpensWhenTheKeyIsHeld() {
    LiveScreen screen(concert());
    const auto hold = [&](int milliseconds) {
        QTest::keyPress(screen.window, Qt::Key_L, Qt::ControlModifier);
        QTest::qWait(milliseconds);
        QTest::keyRelease(screen.window, Qt::Key_L, Qt::ControlModifier);
        QTest::qWait(200);
    };
    hold(1500);  // what locks doesn't open
    QVERIFY(screen.state.isLocked());
    QVERIFY(screen.shows("Vue live verrouillée"));
    screen.click("Setlist");
    screen.click("Retour à tous les shows");
    QVERIFY(screen.shows("LTC"));
    screen.press(Qt::Key_Space);
    screen.click("Morceau 5");
    QCOMPARE(screen.state.activeSongIndex(), 4);
    screen.window->close();
    QVERIFY(screen.window->isVisible());
    QTRY_VERIFY(screen.shows("Quitter Tessivo ?"));
    screen.click("Annuler");
    hold(200);
    QVERIFY(screen.state.isLocked());

    QTest::keyPress(screen.window, Qt::Key_L, Qt::ControlModifier);
    QTRY_VERIFY(!screen.state.isLocked());
    QTest::keyRelease(screen.window, Qt::Key_L, Qt::ControlModifier);
    screen.click("Verrouiller");
    QVERIFY(screen.state.isLocked());
    const QPoint button = Screen::centreOf(screen.item("Maintenir pour ouvrir (Ctrl+L)"));
    QTest::mousePress(screen.window, Qt::LeftButton, {}, button);
    QTRY_VERIFY(!screen.state.isLocked());
    QTest::mouseRelease(screen.window, Qt::LeftButton, {}, button);
}

void LiveScreenTest::f11TogglesFullScreen() {
    LiveScreen screen(concert());
    screen.press(Qt::Key_F11);
    QTRY_COMPARE(screen.window->visibility(), QWindow::FullScreen);
    screen.press(Qt::Key_F11);
    QTRY_COMPARE(screen.window->visibility(), QWindow::Windowed);
}

void LiveScreenTest::aCrashedEveningComesBack_data() {
    QTest::addColumn<QString>("screenThen");
    QTest::addColumn<bool>("fullScreen");
    const QString screen = QGuiApplication::primaryScreen()->name();
    QTest::newRow("on its screen") << screen << true;
    QTest::newRow("whose projector is unplugged") << QStringLiteral("HDMI-9") << false;
}

void LiveScreenTest::aCrashedEveningComesBack() {
    QFETCH(QString, screenThen);
    QFETCH(bool, fullScreen);
    LiveScreen screen(concert());
    QQuickWindow* stage = screen.openStage();
    stage->showFullScreen();
    QTRY_COMPARE(stage->cursor().shape(), Qt::BlankCursor);
    screen.computer.time.advance(5.0);
    auto left = screen.computer.preferences.values;
    std::string& point = left[std::string(Resumption::key)];
    const std::string screenNow = stage->screen()->name().toStdString();
    const std::size_t at = point.find('"' + screenNow + '"', point.find("display\""));
    QVERIFY(at != std::string::npos);
    point.replace(at + 1, screenNow.size(), screenThen.toStdString());

    // Back to the choice, as the next run finds it.
    stage->close();
    screen.computer.time.advance(0.1);
    const std::string& kept = screen.computer.preferences.values[std::string(Resumption::key)];
    QCOMPARE(kept.find("\"display\""), std::string::npos);  // what was closed stays closed
    screen.window->requestActivate();
    QTRY_VERIFY(screen.window->isActive());
    const auto crash = [&] {
        screen.window->setProperty("launchMode", 0);
        QTest::qWait(1);  // what led is gone
        screen.application.resumption.leave();
        screen.computer.preferences.isFull = true;
        screen.state.setActiveShowId(std::nullopt);
        screen.computer.preferences.values = left;
        screen.computer.preferences.isFull = false;
        screen.computer.time.advance(2.0);
        screen.layOut();
    };
    crash();
    QVERIFY(screen.shows("Reprendre\u00A0: Concert"));
    QVERIFY(screen.shows("morceau 1, reste 0:05"));
    screen.press(Qt::Key_Escape);
    QVERIFY(!screen.shows("Reprendre\u00A0: Concert"));
    screen.press(Qt::Key_Return);  // on "Admin" again
    screen.computer.time.advance(2.0);
    QVERIFY(screen.shows("Nouveau show"));
    crash();
    std::optional<AdminBroadcaster> other;
    other.emplace(screen.computer.network.addComputer("Ailleurs"), screen.computer.time);
    other->startChecking();
    screen.computer.time.advance(2.0);
    screen.press(Qt::Key_Return);
    screen.computer.time.advance(2.0);
    screen.click("Changer de mode");
    QVERIFY(!screen.state.activeShow());
    other.reset();
    screen.press(Qt::Key_Return);
    screen.computer.time.advance(2.0);
    QTRY_VERIFY(screen.shows("● En cours — morceau 1/10"));
    QCOMPARE(stage->isVisible(), true);
    QCOMPARE(stage->visibility() == QWindow::FullScreen, fullScreen);
    QTRY_VERIFY(screen.window->isActive());
}

QTEST_MAIN(LiveScreenTest)
#include "LiveScreenTest.moc"
