#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"

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

QPoint centreOf(const QQuickItem* item) {
    return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
}

/// The row that a title field stands in.
QQuickItem* rowOf(QQuickItem* field) {
    while (field && !field->property("isDragged").isValid()) {
        field = field->parentItem();
    }
    return field;
}

QPoint handleOf(QQuickItem* field) {
    return rowOf(field)->mapToScene({18, 20}).toPoint();
}

const QString title1 = QStringLiteral("Morceau 1");
const QString title2 = QStringLiteral("Morceau 2");

}  // namespace

class EditorTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(QStringLiteral("Basic")); }
    void preparesAShowFromNothing();
    void renamesTheShow();
    void aTitleIsKeptAtEveryKeystroke();
    void commitsTimecodeAndLength_data();
    void commitsTimecodeAndLength();
    void clearsTimecodeAndLength();
    void oneRowIsOpenAtATime();
    void aDragTakesThePlaceOfTheRowItEnters();
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
    QVERIFY(screen.texts().contains(QStringLiteral("Ajoute ton premier morceau ci-dessous ↓")));
    QQuickItem* entry = screen.field(QStringLiteral("Titre du morceau, puis Entrée…"));
    screen.click(entry);
    QTest::keyClick(screen.window, Qt::Key_Return);
    QVERIFY(screen.state.activeShow()->songs.empty());
    screen.type(QStringLiteral("  Nuit blanche "));
    QTest::keyClick(screen.window, Qt::Key_Return);
    screen.type(QStringLiteral("Carrousel"));
    screen.click(QStringLiteral("Ajouter"));
    QCOMPARE(screen.state.activeShow()->songs.size(), 2U);
    QCOMPARE(screen.state.activeShow()->songs[0].title, std::string("Nuit blanche"));
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string("Carrousel"));
    QCOMPARE(entry->property("text").toString(), QString());
    QVERIFY(entry->hasActiveFocus());

    screen.window->grabWindow();
    screen.click(screen.button(QStringLiteral("Supprimer le morceau")));
    QCOMPARE(screen.state.activeShow()->songs.size(), 1U);
    screen.click(screen.button(QStringLiteral("Retour à tous les shows")));
    QVERIFY(!screen.state.activeShowId());
}

void EditorTest::renamesTheShow() {
    Screen screen(fourSongs());
    screen.click(QStringLiteral("Concert"));
    QTRY_VERIFY(screen.field(QStringLiteral("Nom du show")));
    QTRY_VERIFY(screen.field(QStringLiteral("Nom du show"))->hasActiveFocus());
    screen.type(QStringLiteral("Gala"));
    QTest::keyClick(screen.window, Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->name, std::string("Gala"));
    QTRY_VERIFY(!screen.field(QStringLiteral("Nom du show")));
    screen.click(QStringLiteral("Gala"));
    QTRY_VERIFY(screen.field(QStringLiteral("Nom du show")));
    screen.type(QStringLiteral("x"));
    screen.click(QStringLiteral("Annuler"));
    QCOMPARE(screen.state.activeShow()->name, std::string("Gala"));
}

void EditorTest::aTitleIsKeptAtEveryKeystroke() {
    Screen screen(fourSongs());
    QQuickItem* field = screen.item(title2);
    screen.click(field);
    QTest::keyClick(screen.window, Qt::Key_Home);
    screen.type(QStringLiteral(" L"));
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string(" LMorceau 2"));
    QCOMPARE(field->property("cursorPosition").toInt(), 2);
    QTest::keyClick(screen.window, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(screen.window, Qt::Key_Delete);
    QCOMPARE(screen.state.activeShow()->songs[1].title, std::string());
    QVERIFY(field->hasActiveFocus());
}

void EditorTest::commitsTimecodeAndLength_data() {
    QTest::addColumn<QString>("placeholder");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* placeholder, const char* typed, const char* shown) {
        QTest::addRow("%s", *typed ? typed : "nothing")
            << QString::fromUtf8(placeholder) << QString::fromUtf8(typed)
            << QString::fromUtf8(shown);
    };
    row("--:--:--:--", "00143200", "00:14:32:00");
    row("--:--:--:--", "14:32", "00:00:14:32");
    row("--:--:--:--", "  ", "");
    row("mm:ss", "3:45", "3:45");
    row("mm:ss", "90", "1:30");
    row("mm:ss", "3:75", "4:15");
    row("mm:ss", "1:02:03", "");
}

void EditorTest::commitsTimecodeAndLength() {
    QFETCH(const QString, placeholder);
    QFETCH(const QString, typed);
    QFETCH(const QString, shown);
    Show show = fourSongs();
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].duration = 60;
    Screen screen(show);
    const Song& song = screen.state.activeShow()->songs[0];
    screen.click(screen.button(QStringLiteral("Déplier")));
    screen.window->grabWindow();
    QQuickItem* field = screen.field(placeholder);
    screen.click(field);
    QTest::keyClick(screen.window, Qt::Key_A, Qt::ControlModifier);
    screen.type(typed);
    QVERIFY(song == show.songs[0]);  // not before Return
    QTest::keyClick(screen.window, Qt::Key_Return);
    QCOMPARE(field->property("text").toString(), shown);
    QCOMPARE(screen.texts().contains(shown), !shown.isEmpty());  // the badge
    QVERIFY(song != show.songs[0] || shown == QLatin1String("10:00:00:00"));
}

void EditorTest::clearsTimecodeAndLength() {
    Show show = fourSongs();
    show.songs[0].ltcTimecode = "10:00:00:00";
    show.songs[0].duration = 60;
    Screen screen(show);
    screen.click(screen.button(QStringLiteral("Déplier")));
    screen.window->grabWindow();
    screen.click(screen.button(QStringLiteral("Effacer le timecode")));
    screen.click(screen.button(QStringLiteral("Effacer la durée")));
    QVERIFY(!screen.state.activeShow()->songs[0].ltcTimecode);
    QVERIFY(!screen.state.activeShow()->songs[0].duration);
    QCOMPARE(screen.field(QStringLiteral("mm:ss"))->property("text").toString(), QString());
}

void EditorTest::oneRowIsOpenAtATime() {
    Screen screen(fourSongs());
    const auto open = [&](const QString& title) {
        return rowOf(screen.item(title))->property("isExpanded").toBool();
    };
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen.item(title2)));
    QVERIFY(open(title2));
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen.item(title1)));
    QVERIFY(open(title1));
    QVERIFY(!open(title2));
    screen.click(screen.button(QStringLiteral("Replier")));
    QVERIFY(!open(title1));
}

void EditorTest::aDragTakesThePlaceOfTheRowItEnters() {
    Screen screen(fourSongs());
    QQuickItem* dragged = rowOf(screen.item(title1));
    const QPoint from = handleOf(screen.item(title1));
    const int x = from.x();
    const QPoint third = centreOf(rowOf(screen.item(QStringLiteral("Morceau 3"))));
    const QPoint fourth = centreOf(rowOf(screen.item(QStringLiteral("Morceau 4"))));

    QTest::mousePress(screen.window, Qt::LeftButton, {}, from);
    QTest::mouseMove(screen.window, {x, from.y() + 12});
    QCOMPARE(order(screen.state), "1234");
    QCOMPARE(dragged->opacity(), 0.4);
    QTest::mouseMove(screen.window, {x, third.y()});
    QCOMPARE(order(screen.state), "2314");
    QTest::mouseMove(screen.window, {x, fourth.y()});
    QCOMPARE(order(screen.state), "2341");
    QCOMPARE(dragged->opacity(), 0.4);
    QTest::mouseRelease(screen.window, Qt::LeftButton, {}, {x, fourth.y()});
    QCOMPARE(dragged->opacity(), 1.0);
    QVERIFY(!dragged->property("isExpanded").toBool());
}

void EditorTest::altArrowsMoveTheSong() {
    Screen screen(fourSongs());
    screen.state.jumpTo(1);
    QQuickItem* field = screen.item(title2);
    screen.click(field);
    QTest::keyClick(screen.window, Qt::Key_Down, Qt::AltModifier);
    QCOMPARE(order(screen.state), "1324");
    QCOMPARE(screen.state.activeSongIndex(), 2);
    QVERIFY(field->hasActiveFocus());
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(screen.window, Qt::Key_Up, Qt::AltModifier);
    }
    QCOMPARE(order(screen.state), "2134");
    QVERIFY(field->hasActiveFocus());
}

void EditorTest::typingSurvivesWhatHappensBesideIt() {
    Show show = fourSongs();
    show.songs[0].duration = 30;
    Screen screen(show);
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen.item(title2)));
    screen.window->grabWindow();
    QQuickItem* field = screen.field(QStringLiteral("--:--:--:--"));
    screen.click(field);
    screen.type(QStringLiteral("1001"));
    QTest::keyClick(screen.window, Qt::Key_Left);
    screen.computer.time.advance(5.0);
    screen.state.jumpTo(2);
    screen.state.updateSongTitle(show.songs[1].id, "Autre titre");
    screen.state.updateSongTitle(show.songs[3].id, "Autre voisin");
    screen.state.moveSong({3}, 0);
    screen.state.removeSong(show.songs[0].id);
    screen.window->grabWindow();
    QVERIFY(field->hasActiveFocus());
    QCOMPARE(field->property("text").toString(), QStringLiteral("1001"));
    QCOMPARE(field->property("cursorPosition").toInt(), 3);
}

void EditorTest::typedTextOutlivesItsRow() {
    Screen screen(showWithSongs(60));
    screen.click(screen.button(QStringLiteral("Déplier")));
    screen.window->grabWindow();
    screen.click(screen.field(QStringLiteral("mm:ss")));
    screen.type(QStringLiteral("3:4"));
    const QPointer<QQuickItem> row = rowOf(screen.item(title1));
    // Another row takes the keyboard, and the first one is scrolled away.
    screen.click(screen.item(QStringLiteral("Morceau 4")));
    auto* list = row->parentItem()->parentItem();
    QMetaObject::invokeMethod(list, "positionViewAtEnd");
    screen.window->grabWindow();
    QTRY_VERIFY(!row);
    QMetaObject::invokeMethod(list, "positionViewAtBeginning");
    screen.window->grabWindow();
    QTRY_VERIFY(screen.field(QStringLiteral("mm:ss")));
    QCOMPARE(screen.field(QStringLiteral("mm:ss"))->property("text").toString(),
             QStringLiteral("3:4"));
}

void EditorTest::typingAndMovingCreateNoDelegate() {
    Screen screen(fourSongs());
    screen.click(screen.item(title2));
    screen.window->grabWindow();
    auto before = Screen::items(screen.window->contentItem());
    screen.type(QStringLiteral("xyz"));
    screen.window->grabWindow();
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(Screen::items(screen.window->contentItem()).size(), before.size());
    QTest::keyClick(screen.window, Qt::Key_Down, Qt::AltModifier);
    screen.window->grabWindow();
    QVERIFY(!before.contains(nullptr));
    QCOMPARE(Screen::items(screen.window->contentItem()).size(), before.size());
}

void EditorTest::editsAGuest() {
    Screen screen(fourSongs());
    QVERIFY(screen.texts().contains(QStringLiteral("Filaire")));  // the chip
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen.item(title2)));
    screen.window->grabWindow();
    const auto& guests = screen.state.activeShow()->songs[1].guests;
    screen.click(screen.field(QStringLiteral("Nom de l'artiste")));
    QTest::keyClick(screen.window, Qt::Key_End);
    screen.type(QStringLiteral(" B"));
    QCOMPARE(guests[0].name, std::string("Léa B"));
    QQuickItem* volume = screen.field(QStringLiteral("Volume"));
    screen.click(volume);
    QTest::keyClick(screen.window, Qt::Key_A, Qt::ControlModifier);
    screen.type(QStringLiteral(" -6 "));
    QCOMPARE(guests[0].volume, std::optional<std::string>("-3"));
    QTest::keyClick(screen.window, Qt::Key_Return);
    QCOMPARE(guests[0].volume, std::optional<std::string>("-6"));
    QCOMPARE(volume->property("text").toString(), QStringLiteral("-6"));
    screen.click(QStringLiteral("Ajouter un guest"));
    QCOMPARE(guests.size(), 2U);
    screen.window->grabWindow();
    screen.click(screen.button(QStringLiteral("Retirer ce guest")));
    QCOMPARE(guests.size(), 1U);
    QCOMPARE(guests[0].name, std::string());
}

void EditorTest::anUnlistedMicrophoneStaysUntilAnotherIsChosen() {
    Screen screen(fourSongs());
    QTest::mouseClick(screen.window, Qt::LeftButton, {}, handleOf(screen.item(title2)));
    screen.window->grabWindow();
    const auto& guest = screen.state.activeShow()->songs[1].guests[0];
    QQuickItem* chooser = screen.item(QStringLiteral("Filaire"));
    while (chooser && !chooser->property("displayText").isValid()) {
        chooser = chooser->parentItem();
    }
    QVERIFY(chooser);
    QCOMPARE(chooser->property("currentIndex").toInt(), -1);
    screen.state.addMic("HF 4");
    QCOMPARE(chooser->property("currentIndex").toInt(), -1);
    QCOMPARE(guest.mic, std::string("Filaire"));
    screen.click(chooser);
    QTRY_VERIFY(screen.item(QStringLiteral("HF 3")));
    screen.click(QStringLiteral("HF 3"));
    QCOMPARE(guest.mic, std::string("HF 3"));
    QCOMPARE(chooser->property("currentIndex").toInt(), 3);
    QCOMPARE(guest.iem, std::string("Perso"));
}

void EditorTest::editsTheLabels() {
    Screen screen(fourSongs());
    screen.click(QStringLiteral("Micros & IEM"));
    screen.window->grabWindow();
    QQuickItem* entry = screen.field(QStringLiteral("Ex: HF 5, Guest 5…"));
    screen.click(entry);
    screen.type(QStringLiteral("  HF 5 "));
    QTest::keyClick(screen.window, Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->mics.back(), std::string("HF 5"));
    QCOMPARE(entry->property("text").toString(), QString());
    screen.type(QStringLiteral("  "));
    QTest::keyClick(screen.window, Qt::Key_Return);
    QCOMPARE(screen.state.activeShow()->mics.size(), 5U);

    screen.window->grabWindow();
    QQuickItem* field = screen.item(QStringLiteral("HF 3"));
    screen.click(field);
    QTest::keyClick(screen.window, Qt::Key_End);
    screen.type(QStringLiteral(" "));
    QCOMPARE(screen.state.activeShow()->mics[3], std::string("HF 3 "));
    screen.state.removeMic(0);
    QVERIFY(field->hasActiveFocus());
    screen.click(screen.button(QStringLiteral("Retirer Générique")));
    QCOMPARE(screen.state.activeShow()->iems, std::vector<std::string>{"Perso"});
}

void EditorTest::spaceActsOnTheLiveTabOnly() {
    Screen screen(fourSongs());
    screen.state.jumpTo(0);
    QTest::keyClick(screen.window, Qt::Key_Space);
    screen.click(screen.item(title1));
    QTest::keyClick(screen.window, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 0);
    screen.click(QStringLiteral("Vue live"));
    QTest::keyClick(screen.window, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), 1);
}

void EditorTest::showsAPlaceholderForAShowThatIsGone() {
    Screen screen(fourSongs());
    QQuickItem* editor = rowOf(screen.item(title1));
    while (editor && !editor->property("selectedTab").isValid()) {
        editor = editor->parentItem();
    }
    QVERIFY(editor);
    editor->setProperty("showId", QStringLiteral("00000000-0000-4000-8000-000000000000"));
    screen.window->grabWindow();
    QVERIFY(screen.texts().contains(QStringLiteral("Ajoute ton premier morceau ci-dessous ↓")));
    QVERIFY(!screen.item(title1));
    screen.click(QStringLiteral("Micros & IEM"));
    screen.window->grabWindow();
    QVERIFY(screen.item(QStringLiteral("Guest 4")));
}

QTEST_MAIN(EditorTest)
#include "EditorTest.moc"
