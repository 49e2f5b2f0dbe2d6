#include <QClipboard>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"

#include <algorithm>
#include <string>

using namespace tessivo;

namespace {

Show fourSongs() {
    Show show = showWithSongs(4);
    show.name = "Concert";
    show.mics = {"HF 1", "HF 2", "HF 2", "HF 3"};
    show.songs[1].guests.push_back({Uuid::random(), "Léa", "Filaire", "Perso", "-3"});
    return show;
}

/// The titles in setlist order, by their last digits.
std::string order(const AppState& state) {
    std::string digits;
    for (const Song& song : state.activeShow()->songs) {
        digits += song.title.back();
    }
    return digits;
}

/// The row of the setlist whose title this is.
QQuickItem* rowOf(const Screen& screen, const char* title) {
    return Screen::around(screen.item(title), "isDragged");
}

/// Where a row can be dragged, and tapped on to open it.
QPoint handleOf(const Screen& screen, const char* title) {
    return rowOf(screen, title)->mapToScene({18, 20}).toPoint();
}

void tap(const Screen& screen, const char* title) {
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen, title));
    screen.layOut();
}

const char* const title1 = "Morceau 1";
const char* const title2 = "Morceau 2";

}  // namespace

class EditorTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void preparesAShowFromNothing();
    void renamesTheShow();
    void aTitleIsKeptAtEveryKeystroke();
    void commitsTimecodeAndLength();
    void clearsTimecodeAndLength();
    void explainsIconsAndWhatIsNotYetStored();
    void oneRowIsOpenAtATime();
    void aDragTakesThePlaceOfTheRowItEnters();
    void aDragScrollsALongListAtItsEdge();
    void tabGoesThroughTheRowsAsTheyAreSeen();
    void altArrowsMoveTheSong();
    void typingSurvivesWhatHappensBesideIt();
    void typedTextOutlivesItsRow();
    void typingAndMovingCreateNoDelegate();
    void editsAGuest();
    void anUnlistedMicrophoneStaysUntilAnotherIsChosen();
    void editsTheLabels();
    void spaceActsOnTheLiveTabOnly();
    void showsAPlaceholderForAShowThatIsGone();
};

void EditorTest::preparesAShowFromNothing() {
    Screen screen{Show()};
    QVERIFY(screen.shows("Ajoute ton premier morceau ci-dessous ↓"));
    const QPointer<QQuickItem> entry = screen.item("Titre du morceau, puis Entrée…");
    QVERIFY(entry->hasActiveFocus());
    screen.press(Qt::Key_Return);
    QVERIFY(screen.state.activeShow()->songs.empty());
    screen.type("  Nuit blanche ");
    screen.press(Qt::Key_Return);
    screen.type("Carrousel");
    screen.click("Ajouter");
    QCOMPARE(screen.state.activeShow()->songs.size(), 2U);
    QCOMPARE(screen.state.activeShow()->songs[0].title, std::string("Nuit blanche"));
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string("Carrousel"));
    QCOMPARE(entry->property("text").toString(), QString());
    QVERIFY(entry->hasActiveFocus());

    // The second half of a double click meets the row that has slid up.
    const QPoint place = Screen::centreOf(screen.item("Supprimer le morceau"));
    screen.click("Supprimer le morceau");
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, place);
    QCOMPARE(screen.state.activeShow()->songs.size(), 1U);
    screen.type("à moitié");
    const auto first = screen.state.activeShowId();
    screen.state.createShow("Autre");
    const auto typed = [&] {
        return screen.item("Titre du morceau, puis Entrée…")->property("text").toString();
    };
    QCOMPARE(typed(), QString());
    screen.state.setActiveShowId(first);
    QCOMPARE(typed(), "à moitié");
    screen.click("Retour à tous les shows");
    QVERIFY(!screen.state.activeShowId());
    QCOMPARE(screen.window->activeFocusItem()->property("label").toString(), "Nouveau show");
}

void EditorTest::renamesTheShow() {
    Show show = fourSongs();
    show.name = "R&B";
    Screen screen(show);
    screen.press(Qt::Key_B, Qt::AltModifier);  // an & in a name makes no shortcut
    QVERIFY(!screen.shows("Nom du show"));
    screen.click("R&B");
    QTRY_VERIFY(screen.item("Nom du show"));
    QTRY_VERIFY(screen.item("Nom du show")->hasActiveFocus());
    screen.type("Gala");
    screen.press(Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->name, std::string("Gala"));
    QTRY_VERIFY(!screen.item("Nom du show"));
    screen.click("Gala");
    QTRY_VERIFY(screen.item("Nom du show"));
    screen.type("x");
    screen.click("Annuler");
    QCOMPARE(screen.state.activeShow()->name, std::string("Gala"));
}

void EditorTest::aTitleIsKeptAtEveryKeystroke() {
    Screen screen(fourSongs());
    QQuickItem* field = screen.item(title2);
    screen.click(field);
    screen.press(Qt::Key_Home);
    screen.type(" L");
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(" LMorceau 2"));
    QCOMPARE(field->property("cursorPosition").toInt(), 2);
    screen.press(Qt::Key_A, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText("Un\r\n deux\n");
    screen.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string("Un / deux"));
    screen.press(Qt::Key_A, Qt::ControlModifier);
    screen.press(Qt::Key_Delete);
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string());
    QVERIFY(field->hasActiveFocus());
}

void EditorTest::commitsTimecodeAndLength() {
    struct Row {
        const char* placeholder;
        const char* typed;
        const char* shown;
    };
    const Row rows[] = {
        {"--:--:--:--", "00143200", "00:14:32:00"},
        {"--:--:--:--", "14:32", "00:00:14:32"},
        {"--:--:--:--", "  ", ""},
        {"mm:ss", "3:45", "3:45"},
        {"mm:ss", "90", "1:30"},
        {"mm:ss", "1:02:03", ""},
    };
    Screen screen(fourSongs());
    const Song& song = screen.state.activeShow()->songs[0];
    screen.click("Déplier");
    QQuickItem* timecode = screen.item("--:--:--:--");
    screen.click(timecode);
    screen.press(Qt::Key_Tab);
    QVERIFY(screen.item("mm:ss")->hasActiveFocus());
    for (const auto& [placeholder, typed, shown] : rows) {
        screen.state.updateSongLtcTimecode(song.id, "10:00:00:00");
        screen.state.updateSongDuration(song.id, 60);
        const Song before = song;
        QQuickItem* field = screen.item(placeholder);
        screen.click(field);
        screen.press(Qt::Key_A, Qt::ControlModifier);
        screen.type("9");
        screen.press(Qt::Key_Escape);
        QCOMPARE(field->property("text").toString(), field == timecode ? "10:00:00:00" : "1:00");
        screen.press(Qt::Key_A, Qt::ControlModifier);
        screen.type(typed);
        QVERIFY2(song == before, typed);  // not before Return
        screen.press(Qt::Key_Return);
        screen.layOut();
        QCOMPARE(field->property("text").toString(), shown);
        QCOMPARE(screen.texts().contains(shown), *shown != '\0');  // the badge
        QVERIFY2(song != before, typed);
    }
}

void EditorTest::clearsTimecodeAndLength() {
    Show show = fourSongs();
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].duration = 60;
    Screen screen(show);
    screen.click("Déplier");
    screen.click("Effacer le timecode");
    screen.click("Effacer la durée");
    QVERIFY(!screen.state.activeShow()->songs[0].ltcTimecode);
    QVERIFY(!screen.state.activeShow()->songs[0].duration);
    QCOMPARE(screen.item("mm:ss")->property("text").toString(), QString());
}

void EditorTest::explainsIconsAndWhatIsNotYetStored() {
    Screen screen(fourSongs());
    screen.click("Déplier");
    QTest::mouseMove(screen.window, Screen::centreOf(screen.item("Effacer la durée")));
    QTRY_VERIFY(screen.texts().contains("Effacer la durée"));
    screen.click("mm:ss");
    screen.type("3:45");
    QTRY_VERIFY(screen.texts().contains("Entrée pour valider"));
    screen.press(Qt::Key_Return);
    QTRY_VERIFY(!screen.texts().contains("Entrée pour valider"));
}

void EditorTest::oneRowIsOpenAtATime() {
    Screen screen(fourSongs());
    const auto open = [&](const char* title) {
        return rowOf(screen, title)->property("isExpanded").toBool();
    };
    tap(screen, title2);
    QVERIFY(open(title2));
    tap(screen, title1);
    QVERIFY(open(title1));
    QVERIFY(!open(title2));
    screen.click("Replier");
    QVERIFY(!open(title1));
}

void EditorTest::aDragTakesThePlaceOfTheRowItEnters() {
    Screen screen(fourSongs());
    QQuickItem* dragged = rowOf(screen, title1);
    const QPoint from = handleOf(screen, title1);
    const int x = from.x();
    const QPoint third = Screen::centreOf(rowOf(screen, "Morceau 3"));
    const QPoint fourth = Screen::centreOf(rowOf(screen, "Morceau 4"));

    QTest::mousePress(screen.window, Qt::LeftButton, {}, from);
    QTest::mouseMove(screen.window, {x, from.y() + 12});
    QCOMPARE(order(screen.state), "1234");
    QCOMPARE(dragged->opacity(), 0.4);
    QTest::mouseMove(screen.window, {x, third.y()});
    QCOMPARE(order(screen.state), "2314");
    QTest::mouseMove(screen.window, {x, fourth.y()});
    QCOMPARE(order(screen.state), "2341");
    QCOMPARE(dragged->opacity(), 0.4);
    screen.press(Qt::Key_Escape);
    QCOMPARE(order(screen.state), "1234");
    QTest::mouseMove(screen.window, {x, third.y()});
    QTest::mouseRelease(screen.window, Qt::LeftButton, {}, {x, third.y()});
    QCOMPARE(order(screen.state), "1234");
    QCOMPARE(dragged->opacity(), 1.0);
    QVERIFY(!dragged->property("isExpanded").toBool());
}

void EditorTest::aDragScrollsALongListAtItsEdge() {
    Screen screen(showWithSongs(30));
    const auto positionOfFirst = [&, id = screen.state.activeShow()->songs[0].id] {
        const auto& songs = screen.state.activeShow()->songs;
        return std::ranges::find(songs, id, &Song::id) - songs.begin();
    };
    const QPointer<QQuickItem> dragged = rowOf(screen, title1);
    const QPoint from = handleOf(screen, title1);
    const QPoint bottom = screen.item("Titre du morceau, puis Entrée…")->mapToScene({}).toPoint();
    QTest::mousePress(screen.window, Qt::LeftButton, {}, from);
    QTest::mouseMove(screen.window, {from.x(), from.y() + 12});
    // Held still at the lower edge until the last row comes, and then at the upper one.
    QTest::mouseMove(screen.window, {from.x(), bottom.y() - 20});
    QTRY_VERIFY_WITH_TIMEOUT(positionOfFirst() == 29, 60000);
    QTest::mouseMove(screen.window, {from.x(), from.y() - 18});
    QTRY_VERIFY_WITH_TIMEOUT(positionOfFirst() == 0, 60000);
    QVERIFY(dragged);
    QTest::mouseRelease(screen.window, Qt::LeftButton, {}, {from.x(), from.y() - 18});
    QCOMPARE(dragged->opacity(), 1.0);
}

void EditorTest::tabGoesThroughTheRowsAsTheyAreSeen() {
    Screen screen(showWithSongs(60));
    const auto focusedText = [&](const char* property) {
        return screen.window->activeFocusItem()->property(property).toString();
    };
    // Moved up and down, the first row ends in the third place.
    screen.click(title1);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    screen.layOut();
    QCoreApplication::processEvents();
    QQuickItem* list = rowOf(screen, title1)->parentItem()->parentItem();
    QMetaObject::invokeMethod(list, "positionViewAtBeginning");
    screen.click(title2);
    QStringList titles;
    for (int i = 0; i < 30; ++i) {
        titles.append(focusedText("text"));
        QCOMPARE(focusedText("placeholderText"), "Titre du morceau");
        const qreal y = screen.window->activeFocusItem()->mapToItem(list, {}).y();
        QVERIFY2(y >= 0 && y < list->height(), qPrintable(titles.last()));
        for (const char* tip : {"Déplier", "Supprimer le morceau"}) {
            screen.press(Qt::Key_Tab);
            QCOMPARE(focusedText("tip"), tip);
        }
        screen.press(Qt::Key_Tab);
        screen.layOut();
        QCoreApplication::processEvents();
    }
    QCOMPARE(titles.mid(0, 4), QStringList({title2, "Morceau 3", title1, "Morceau 4"}));
    QCOMPARE(titles.last(), "Morceau 30");
    // And back, over rows that are made again.
    for (int i = 0; i < 30 * 3; ++i) {
        screen.press(Qt::Key_Backtab, Qt::ShiftModifier);
        screen.layOut();
        QCoreApplication::processEvents();
    }
    QCOMPARE(focusedText("text"), title2);
}

void EditorTest::altArrowsMoveTheSong() {
    Screen screen(fourSongs());
    screen.state.jumpTo(1);
    QQuickItem* field = screen.item(title2);
    screen.click(field);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(order(screen.state), "1324");
    QCOMPARE(screen.state.activeSongIndex(), 2);
    QVERIFY(field->hasActiveFocus());
    for (int i = 0; i < 4; ++i) {
        screen.press(Qt::Key_Up, Qt::AltModifier);
    }
    QCOMPARE(order(screen.state), "2134");
    QVERIFY(field->hasActiveFocus());
}

void EditorTest::typingSurvivesWhatHappensBesideIt() {
    Show show = fourSongs();
    show.songs[0].duration = 30;
    Screen screen(show);
    tap(screen, title2);
    QQuickItem* field = screen.item("--:--:--:--");
    screen.click(field);
    screen.type("1001");
    screen.press(Qt::Key_Left);
    screen.computer.time.advance(5.0);
    screen.state.jumpTo(2);
    screen.state.updateSongTitle(show.songs[1].id, "Autre titre");
    screen.state.updateSongTitle(show.songs[3].id, "Autre voisin");
    screen.state.moveSong({3}, 0);
    screen.state.removeSong(show.songs[0].id);
    screen.layOut();
    QVERIFY(field->hasActiveFocus());
    QCOMPARE(field->property("text").toString(), "1001");
    QCOMPARE(field->property("cursorPosition").toInt(), 3);
}

void EditorTest::typedTextOutlivesItsRow() {
    Screen screen(showWithSongs(60));
    screen.click("Déplier");
    screen.click("mm:ss");
    screen.type("3:4");
    const QPointer<QQuickItem> row = rowOf(screen, title1);
    // Another row takes the keyboard, and the first one is scrolled away.
    screen.click("Morceau 4");
    auto* list = row->parentItem()->parentItem();
    QMetaObject::invokeMethod(list, "positionViewAtEnd");
    screen.layOut();
    QTRY_VERIFY(!row);
    QMetaObject::invokeMethod(list, "positionViewAtBeginning");
    screen.layOut();
    QTRY_VERIFY(screen.item("mm:ss"));
    QCOMPARE(screen.item("mm:ss")->property("text").toString(), "3:4");
}

void EditorTest::typingAndMovingCreateNoDelegate() {
    Screen screen(fourSongs());
    screen.click(title2);
    auto before = Screen::items(screen.window->contentItem());
    screen.type("xyz");
    screen.layOut();
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(Screen::items(screen.window->contentItem()).size(), before.size());
    screen.press(Qt::Key_Down, Qt::AltModifier);
    screen.layOut();
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(Screen::items(screen.window->contentItem()).size(), before.size());
}

void EditorTest::editsAGuest() {
    Screen screen(fourSongs());
    QVERIFY(screen.shows("Filaire"));  // the chip
    tap(screen, title2);
    const auto& guests = screen.state.activeShow()->songs[1].guests;
    screen.click("Nom de l'artiste");
    screen.press(Qt::Key_End);
    screen.type(" B");
    QCOMPARE(guests[0].name, std::string("Léa B"));
    QQuickItem* volume = screen.item("Volume");
    screen.click(volume);
    screen.press(Qt::Key_A, Qt::ControlModifier);
    screen.type(" -6 ");
    QCOMPARE(guests[0].volume, std::optional<std::string>("-3"));
    screen.press(Qt::Key_Return);
    QCOMPARE(guests[0].volume, std::optional<std::string>("-6"));
    QCOMPARE(volume->property("text").toString(), "-6");
    screen.click("Ajouter un guest");
    QCOMPARE(guests.size(), 2U);
    screen.type("Zoé");
    QCOMPARE(guests[1].name, std::string("Zoé"));
    screen.click("Retirer ce guest");
    QCOMPARE(guests.size(), 1U);
    QCOMPARE(guests[0].name, std::string("Zoé"));
}

void EditorTest::anUnlistedMicrophoneStaysUntilAnotherIsChosen() {
    Screen screen(fourSongs());
    tap(screen, title2);
    const auto& guest = screen.state.activeShow()->songs[1].guests[0];
    QQuickItem* chooser = Screen::around(screen.item("Filaire"), "displayText");
    QVERIFY(chooser);
    QCOMPARE(chooser->property("currentIndex").toInt(), -1);
    screen.state.addMic("HF 4");
    QCOMPARE(chooser->property("currentIndex").toInt(), -1);
    QCOMPARE(guest.mic, std::string("Filaire"));
    // What is typed while the list is open stays out of the field that had the keyboard.
    screen.click(title2);
    screen.click(chooser);
    QTRY_VERIFY(screen.item("HF 3"));
    screen.type("HF");
    screen.click("HF 3");
    screen.type("HF 1");
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(title2));
    QCOMPARE(guest.mic, std::string("HF 3"));
    QCOMPARE(chooser->property("currentIndex").toInt(), 3);
    QCOMPARE(guest.iem, std::string("Perso"));
}

void EditorTest::editsTheLabels() {
    Screen screen(fourSongs());
    screen.click("Micros & IEM");
    QQuickItem* entry = screen.item("Ex: HF 5, Guest 5…");
    screen.click(entry);
    screen.type("  HF 5 ");
    screen.press(Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->mics.back(), std::string("HF 5"));
    QCOMPARE(entry->property("text").toString(), QString());
    screen.type("  ");
    screen.press(Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->mics.size(), 5U);

    screen.layOut();
    QQuickItem* field = screen.item("HF 3");
    screen.click(field);
    screen.press(Qt::Key_End);
    screen.type(" ");
    QCOMPARE(screen.state.activeShow()->mics[3], std::string("HF 3 "));
    screen.state.removeMic(0);
    QVERIFY(field->hasActiveFocus());
    screen.click("Retirer Générique");
    QCOMPARE(screen.state.activeShow()->iems, std::vector<std::string>{"Perso"});
}

void EditorTest::spaceActsOnTheLiveTabOnly() {
    Screen screen(fourSongs());
    screen.state.jumpTo(0);
    screen.press(Qt::Key_Space);
    screen.click(title1);
    screen.press(Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 0);
    screen.click("Vue live");
    screen.press(Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 1);
}

void EditorTest::showsAPlaceholderForAShowThatIsGone() {
    Screen screen(fourSongs());
    QQuickItem* editor = Screen::around(screen.item(title1), "selectedTab");
    QVERIFY(editor);
    editor->setProperty("showId", "00000000-0000-4000-8000-000000000000");
    screen.layOut();
    QVERIFY(screen.shows("Ajoute ton premier morceau ci-dessous ↓"));
    QVERIFY(!screen.item(title1));
    screen.click("Micros & IEM");
    QVERIFY(screen.item("Guest 4"));
}

QTEST_MAIN(EditorTest)
#include "EditorTest.moc"
