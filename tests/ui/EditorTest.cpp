#include <QClipboard>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

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
    void typingAndMovingKeepTheFieldAndEveryRow();
    void returnCommitsTimecodeAndLength();
    void aCollisionIsMarkedWhileItIsTyped();
    void oneRowIsOpenAtATime();
    void aDragTakesThePlaceOfTheRowItEnters();
    void aDragScrollsALongListAtItsEdge();
    void tabGoesThroughTheRowsAsTheyAreSeen();
    void typingSurvivesWhatHappensBesideIt();
    void aLongTitleIsEditedWhole();
    void typedTextOutlivesItsRow();
    void editsAGuest();
    void editsTheLabels();
    void ctrlZTakesBackWhatIsNotTypedText();
    void aRemovalOffersToTakeItBack();
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

    // A tip comes once the pointer has rested, and not for a row that has gone meanwhile.
    QTest::mouseMove(screen.window, Screen::centreOf(screen.item("Supprimer le morceau")));
    const auto showsTip = [&] {
        return std::ranges::any_of(
            screen.window->contentItem()->childItems(),
            [](QQuickItem* item) { return item->inherits("QQuickOverlay") && item->isVisible(); });
    };
    QTRY_VERIFY(showsTip());
    QTest::mouseMove(screen.window, Screen::centreOf(entry));
    QTRY_VERIFY(!showsTip());
    QTest::mouseMove(screen.window, Screen::centreOf(screen.item("Supprimer le morceau")));
    screen.state.addSong("Rappel");
    screen.state.removeSong(screen.state.activeShow()->songs[0].id);
    QTest::qSleep(800);
    QCoreApplication::processEvents();
    screen.layOut();

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

void EditorTest::typingAndMovingKeepTheFieldAndEveryRow() {
    Screen screen(fourSongs());
    screen.state.jumpTo(1);
    QQuickItem* field = screen.item(title2);
    screen.click(field);
    QQuickItem* const list = rowOf(screen, title2)->parentItem();
    const auto before = Screen::items(list);
    screen.press(Qt::Key_Home);
    screen.type(" L");
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(" LMorceau 2"));
    QCOMPARE(field->property("cursorPosition").toInt(), 2);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(order(screen.state), "1324");
    QCOMPARE(screen.state.activeSongIndex(), 2);
    screen.layOut();
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(Screen::items(list).size(), before.size());
    for (int i = 0; i < 4; ++i) {
        screen.press(Qt::Key_Up, Qt::AltModifier);
    }
    QCOMPARE(order(screen.state), "2134");
    screen.press(Qt::Key_A, Qt::ControlModifier);
    QGuiApplication::clipboard()->setText("Un\r\n deux\n");
    screen.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(screen.state.activeShow()->songs[0].title, std::string("Un / deux"));
    screen.press(Qt::Key_A, Qt::ControlModifier);
    screen.press(Qt::Key_Delete);
    QCOMPARE(screen.state.activeShow()->songs[0].title, std::string());
    QVERIFY(field->hasActiveFocus());
}

void EditorTest::aCollisionIsMarkedWhileItIsTyped() {
    Show show = fourSongs();
    show.songs[1].guests[0] = {Uuid::random(), "Léa", "HF 1", "Perso", std::nullopt};
    show.songs[1].guests.push_back({Uuid::random(), "Karim", "HF 2", "Générique", std::nullopt});
    Screen screen(show);
    tap(screen, title2);
    QVERIFY(!screen.shows("Collision"));
    const Song& song = screen.state.activeShow()->songs[1];
    screen.state.updateGuest(song.id, song.guests[1].id, std::nullopt, " HF 1", std::nullopt);
    QVERIFY(screen.shows("Collision"));
    QVERIFY(screen.shows("HF 1\u00A0: Léa et Karim, collision"));
    screen.state.updateGuest(song.id, song.guests[1].id, std::nullopt, "HF 9", std::nullopt);
    QVERIFY(!screen.shows("Collision"));
    QVERIFY(screen.shows("Hors liste\u00A0: HF 9"));
}

void EditorTest::returnCommitsTimecodeAndLength() {
    struct Row {
        const char* placeholder;
        const char* typed;
        const char* shown;
    };
    const Row rows[] = {
        {"--:--:--:--", "14:32", "00:00:14:32"},
        {"--:--:--:--", "  ", ""},
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
        QVERIFY2(song == before, typed);
        QTRY_VERIFY(screen.texts().contains("Entrée pour valider"));
        screen.press(Qt::Key_Return);
        QTRY_VERIFY(!screen.texts().contains("Entrée pour valider"));
        screen.layOut();
        QCOMPARE(field->property("text").toString(), shown);
        QCOMPARE(screen.texts().contains(shown), *shown != '\0');  // the badge
        QVERIFY2(song != before, typed);
    }
    screen.state.updateSongDuration(song.id, 60);
    QTest::mouseMove(screen.window, Screen::centreOf(screen.item("Effacer la durée")));
    QTRY_VERIFY(screen.texts().contains("Effacer la durée"));
    screen.click("Effacer la durée");
    screen.click("Effacer le timecode");
    QVERIFY(!song.duration);
    QVERIFY(!song.ltcTimecode);
    QCOMPARE(screen.item("mm:ss")->property("text").toString(), QString());
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
    const auto focused = [&](const char* property) {
        return screen.window->activeFocusItem()->property(property).toString();
    };
    const auto press = [&](Qt::Key key) {
        screen.press(key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        screen.layOut();
        QCoreApplication::processEvents();
    };
    // Moved up and down, the first row ends in the third place.
    screen.click(title1);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    screen.press(Qt::Key_Down, Qt::AltModifier);
    screen.layOut();
    QQuickItem* list = rowOf(screen, title1)->parentItem()->parentItem();
    QMetaObject::invokeMethod(list, "positionViewAtBeginning");
    screen.click(title2);
    QStringList titles;
    for (int i = 0; i < 30; ++i) {
        titles.append(focused("text"));
        const qreal y = screen.window->activeFocusItem()->mapToItem(list, {}).y();
        QVERIFY2(y >= 0 && y < list->height(), qPrintable(titles.last()));
        for (const char* tip : {"Déplier", "Supprimer le morceau"}) {
            press(Qt::Key_Tab);
            QCOMPARE(focused("tip"), tip);
        }
        press(Qt::Key_Tab);
    }
    QCOMPARE(titles.mid(0, 4), QStringList({title2, "Morceau 3", title1, "Morceau 4"}));
    QCOMPARE(titles.last(), "Morceau 30");
    // And back, over rows that are made again.
    for (int i = 0; i < 30 * 3; ++i) {
        press(Qt::Key_Backtab);
    }
    QCOMPARE(focused("text"), title2);
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

void EditorTest::aLongTitleIsEditedWhole() {
    Show show = fourSongs();
    show.songs[1].title.assign(2'000, 'x');
    Screen screen(show);
    const std::string beginning = std::string(300, 'x') + "…";
    QQuickItem* field = screen.item(beginning.c_str());
    screen.click(field);
    screen.press(Qt::Key_End);
    screen.type("y");
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(2'000, 'x') + "y");
    screen.click("Titre du morceau, puis Entrée…");
    QCOMPARE(field->property("text").toString().toStdString(), beginning);
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
    const std::pair<const char*, std::optional<std::string>> volumes[] = {{" -6 ", "-6"},
                                                                          {"  ", {}}};
    for (const auto& [typed, kept] : volumes) {
        const auto before = guests[0].volume;
        screen.click(volume);
        screen.press(Qt::Key_A, Qt::ControlModifier);
        screen.type(typed);
        QCOMPARE(guests[0].volume, before);
        screen.press(Qt::Key_Return);
        QCOMPARE(guests[0].volume, kept);
        QCOMPARE(volume->property("text").toString().toStdString(), kept.value_or(""));
    }
    // A microphone that isn't listed stays until another is chosen.
    QQuickItem* chooser = Screen::around(screen.item("Filaire"), "displayText");
    screen.state.addMic("HF 4");
    QCOMPARE(chooser->property("currentIndex").toInt(), -1);
    const std::pair<const char*, const char*> choices[] = {{"Filaire", "HF 4"},
                                                           {"Perso", "Générique"}};
    for (const auto& [shown, chosen] : choices) {
        // What is typed while the list is open stays out of the field that had the keyboard.
        screen.click(title2);
        screen.click(Screen::around(screen.item(shown), "displayText"));
        QTRY_VERIFY(screen.item(chosen));
        screen.type("HF");
        screen.click(chosen);
        screen.type("HF 1");
    }
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(title2));
    QCOMPARE(guests[0].mic, std::string("HF 4"));
    QCOMPARE(guests[0].iem, std::string("Générique"));
    QCOMPARE(chooser->property("currentIndex").toInt(), 4);
    screen.click("Ajouter un guest");
    QCOMPARE(guests.size(), 2U);
    screen.type("Zoé");
    QCOMPARE(guests[1].name, std::string("Zoé"));
    screen.click("Retirer ce guest");
    QCOMPARE(guests.size(), 1U);
    QCOMPARE(guests[0].name, std::string("Zoé"));
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
    QCOMPARE(field->property("text").toString(), "HF 3 ");
    screen.click("Retirer Générique");
    screen.click("Perso");
    screen.press(Qt::Key_End);
    screen.type("!");
    QCOMPARE(screen.state.activeShow()->iems, std::vector<std::string>{"Perso!"});
}

void EditorTest::ctrlZTakesBackWhatIsNotTypedText() {
    Screen screen(fourSongs());
    const std::vector<Show> before = screen.state.shows();
    // A title counts letter by letter: nothing is left that would be the field's own.
    screen.click(title1);
    screen.type("abc");
    QVERIFY(screen.state.shows() != before);
    screen.press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(screen.state.shows() == before);
    QCOMPARE(screen.window->activeFocusItem()->property("text").toString(), QString(title1));
    screen.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(screen.state.shows() != before);
    screen.press(Qt::Key_Z, Qt::ControlModifier);

    // What stands in the entry line isn't a song yet; what Return made of it is one.
    QQuickItem* entry = screen.item("Titre du morceau, puis Entrée…");
    screen.click(entry);
    screen.type("Rap");
    screen.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(entry->property("text").toString(), QString());
    screen.type("Rappel");
    screen.press(Qt::Key_Return);
    QCOMPARE(order(screen.state), std::string("1234l"));
    screen.press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(screen.state.shows() == before);
    QCOMPARE(entry->property("text").toString(), QString());

    // A length waits for Return.
    tap(screen, title2);
    QQuickItem* length = screen.item("mm:ss");
    screen.click(length);
    screen.type("3:45");
    screen.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(length->property("text").toString(), QString());
    QVERIFY(screen.state.redoableEdit());  // the song is still the last edit
    screen.type("3:45");
    screen.press(Qt::Key_Return);
    QCOMPARE(screen.state.shows()[0].songs[1].duration, std::optional<std::int64_t>(225));
    screen.press(Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(screen.state.shows() == before);
    QCOMPARE(length->property("text").toString(), QString());
}

void EditorTest::aRemovalOffersToTakeItBack() {
    Screen screen(fourSongs());
    QVERIFY(!screen.shows("Annuler"));
    screen.click("Supprimer le morceau");
    QCOMPARE(order(screen.state), std::string("234"));
    QVERIFY(screen.shows("Morceau supprimé\u00A0: «\u00A0Morceau 1\u00A0»"));
    screen.click("Annuler");
    QCOMPARE(order(screen.state), std::string("1234"));
    QVERIFY(!screen.shows("Annuler"));
    screen.click("Supprimer le morceau");
    screen.computer.time.advance(10.0);
    QVERIFY(!screen.shows("Annuler"));
}

void EditorTest::showsAPlaceholderForAShowThatIsGone() {
    Screen screen(fourSongs());
    Screen::around(screen.item(title1), "selectedTab")->setProperty("showId", "gone");
    screen.layOut();
    QVERIFY(!screen.shows("Nouveau show"));
    QVERIFY(screen.shows("Ajoute ton premier morceau ci-dessous ↓"));
    screen.click("Micros & IEM");
    QVERIFY(screen.item("Guest 4"));
}

QTEST_MAIN(EditorTest)
#include "EditorTest.moc"
