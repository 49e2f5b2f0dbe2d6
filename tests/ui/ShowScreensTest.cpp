#include <QQuickStyle>
#include <QTest>

#include "import/ColumnLetters.h"
#include "support/Screen.h"
#include "support/Shows.h"
#include "support/WorkbookWriter.h"
#include "ui/import/ShowImportViewModel.h"

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

using namespace tessivo;
using namespace tessivo::test;

namespace {

std::string row(int number, const std::vector<std::string>& texts) {
    std::string cells;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        cells += "<c r=\"" + columnLetter(static_cast<std::int64_t>(i) + 1) +
                 std::to_string(number) + "\" t=\"inlineStr\"><is><t>" + texts[i] + "</t></is></c>";
    }
    return "<row r=\"" + std::to_string(number) + "\">" + cells + "</row>";
}

/// Does something to the import, and lets the work that comes of it end.
void change(Screen& screen, const std::function<void(ShowImportViewModel&)>& what) {
    what(*screen.window->findChild<ShowImportViewModel*>());
    screen.computer.time.drain();
    screen.layOut();
}

/// Chooses a file with this content on the import sheet.
void pickFile(Screen& screen, const std::string& content) {
    screen.computer.files.contents["/Gala.xlsx"] = content;
    screen.computer.panels.answers = {"/Gala.xlsx"};
    screen.click("Choisir un fichier…");
    screen.computer.time.drain();
    screen.layOut();
}

ShowImportViewModel* sheetImportOf(const Screen& screen) {
    return screen.window->findChild<ShowImportViewModel*>();
}

/// In one place, faster than anybody aims; QTest would let the time of a double click pass.
void clickThrice(QQuickWindow* window, const QPointF& place) {
    static quint64 time = 1'000'000'000;  // milliseconds
    for (int i = 0; i < 6; ++i) {
        const bool isPress = i % 2 == 0;
        QMouseEvent event(isPress ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease, place,
                          window->mapToGlobal(place), Qt::LeftButton,
                          isPress ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        event.setTimestamp(time += 40);
        QCoreApplication::sendEvent(window, &event);
        QCoreApplication::processEvents();
    }
    time += 10'000;
}

const std::vector<Show> noShows;

}  // namespace

class ShowScreensTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle(QStringLiteral("Basic")); }
    void cardsTellTheShowsAndOpenThem();
    void aShowIsCreatedOrNot_data();
    void aShowIsCreatedOrNot();
    void aShowIsDeletedOnlyWhenConfirmed();
    void aRunSheetIsImported();
    void whatSeemsTooLargeIsConfirmed();
    void aCancelledPanelAndABadFileChangeNothing();
    void workThatNobodyWaitsForChangesNothing();
    void choosingASheetTakesTheRolesBack();
    void absurdColumnsAreBounded();
};

void ShowScreensTest::cardsTellTheShowsAndOpenThem() {
    Show one = showWithSongs(1);
    one.name = "Solo";
    one.mics.clear();
    Show none;
    none.name = "Rien";
    Screen screen(std::vector{one, none});
    QVERIFY(screen.shows("1 morceau · 0 micros configurés"));
    QVERIFY(screen.shows("0 morceaux · 4 micros configurés"));
    QVERIFY(!screen.shows("Aucun show pour l'instant"));
    screen.state.jumpTo(5);
    screen.click("Solo");
    QCOMPARE(screen.state.activeShowId(), std::optional(one.id));
    QCOMPARE(screen.state.activeSongIndex(), 5);
}

void ShowScreensTest::aShowIsCreatedOrNot_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("named") << "Gala" << int(Qt::Key_Return) << QStringList{"Gala"};
    QTest::newRow("nameless") << "" << int(Qt::Key_Return) << QStringList{"Nouveau show"};
    QTest::newRow("cancelled") << "Gala" << int(Qt::Key_Escape) << QStringList{};
}

void ShowScreensTest::aShowIsCreatedOrNot() {
    QFETCH(QString, typed);
    QFETCH(int, key);
    QFETCH(QStringList, names);
    Screen screen(noShows);
    QVERIFY(screen.shows("Aucun show pour l'instant"));
    // What was typed and cancelled before isn't there again.
    screen.click("Nouveau show");
    screen.type("abandon");
    screen.press(Qt::Key_Escape);
    screen.click("Nouveau show");
    screen.type(typed.toUtf8().constData());
    screen.press(Qt::Key(key));
    QStringList created;
    for (const Show& show : screen.state.shows()) {
        created.append(QString::fromStdString(show.name));
    }
    QCOMPARE(created, names);
    QCOMPARE(screen.state.activeShowId().has_value(), !names.isEmpty());
}

void ShowScreensTest::aShowIsDeletedOnlyWhenConfirmed() {
    std::vector<Show> shows(8);
    std::ranges::generate(shows, [count = 0U]() mutable { return showWithSongs(++count); });
    Screen screen(shows);
    QVERIFY(screen.shows("1 morceau · 4 micros configurés"));
    screen.click("Supprimer ce show");
    screen.press(Qt::Key_Return);  // too hasty to mean it
    for (const char* answer : {"Annuler", "Supprimer"}) {
        QCOMPARE(screen.state.shows().size(), shows.size());
        screen.click("Supprimer ce show");
        QVERIFY(screen.shows("Cette action supprimera le show et toute sa setlist."));
        // What a nervous finger adds doesn't open the show behind the question.
        clickThrice(screen.window, Screen::centreOf(screen.item(answer)));
        QVERIFY(!screen.state.activeShowId());
    }
    QVERIFY(std::ranges::equal(screen.state.shows(), std::span(shows).subspan(1)));
    screen.layOut();
    QVERIFY(!screen.shows("1 morceau · 4 micros configurés"));
}

void ShowScreensTest::aRunSheetIsImported() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    pickFile(screen,
             workbookOf(row(2, {"Titre", "Durée"}) + row(3, {"Introduction du soir", "0:03:45"}) +
                        row(4, {"Final", "3 min"})));
    QCOMPARE(screen.computer.panels.openRequests.size(), 1U);
    QCOMPARE(screen.computer.panels.openRequests[0].extension, "xlsx");
    QVERIFY(screen.shows("Ligne 2"));
    QVERIFY(screen.shows("0 morceaux seront créés"));
    QVERIFY(!screen.shows("Feuille"));
    screen.click("Importer");
    QVERIFY(screen.state.shows().empty());

    // The keyboard is at the first column, after the choice of rows; a stray Escape throws nothing
    // away.
    screen.press(Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(screen.window->activeFocusItem()->property("tip").toString(), "Augmenter");
    screen.press(Qt::Key_Tab);
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape}) {
        screen.press(key);
    }
    change(screen, [](ShowImportViewModel& sheet) { sheet.setRole(1, 3); });
    QVERIFY(screen.shows("2 morceaux seront créés"));
    screen.click("1 durée et 0 timecode lus, 1 cellule illisible");
    QVERIFY(screen.shows("Ligne 4, colonne B\u00A0: 3 min → 3:00"));
    screen.click("Lire aussi ces notations");
    screen.computer.time.drain();
    QCOMPARE(sheetImportOf(screen)->durationCount(), 2);
    screen.layOut();
    screen.click("Ne pas lire");
    screen.computer.time.drain();
    QCOMPARE(sheetImportOf(screen)->durationCount(), 1);
    const RunSheetTableModel& table = *sheetImportOf(screen)->table();
    QCOMPARE(table.index(0, 1).data(RunSheetTableModel::MeaningRole), "Durée");
    QVERIFY(table.widthOf(0) > table.widthOf(1));
    change(screen, [](ShowImportViewModel& sheet) { sheet.setStartRow(4); });
    QVERIFY(screen.shows("1 morceau sera créé"));
    QVERIFY(table.index(3, 1).data(RunSheetTableModel::UnreadRole).toBool());

    screen.click("Gala");
    screen.type("!");
    sheetImportOf(screen)->setStartRow(9);
    screen.click("Importer");
    screen.computer.time.drain();
    QVERIFY(screen.shows("La ligne de départ dépasse la fin du tableau."));
    change(screen, [](ShowImportViewModel& sheet) { sheet.setStartRow(4); });
    screen.click("Importer");
    screen.computer.time.drain();
    QVERIFY(screen.state.activeShow());
    QCOMPARE(screen.state.activeShow()->name, "Gala!");
    QCOMPARE(screen.state.activeShow()->songs.size(), 1U);
    QTRY_VERIFY(!sheetImportOf(screen));
}

void ShowScreensTest::whatSeemsTooLargeIsConfirmed() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    const std::string crowd = QByteArray("Voix+").repeated(101).toStdString();
    pickFile(screen, workbookOf(row(1, {"Titre", "Guests"}) + row(2, {"Chœur", crowd})));
    change(screen, [](ShowImportViewModel& sheet) { sheet.setRole(0, 1); });
    sheetImportOf(screen)->setRole(1, 2);
    screen.click("Importer");  // before it is known what that gives
    screen.computer.time.drain();
    QVERIFY(screen.state.shows().empty());
    QTRY_VERIFY(screen.shows("Importer tout cela\u00A0?"));
}

void ShowScreensTest::aCancelledPanelAndABadFileChangeNothing() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    pickFile(screen, "rien");
    QVERIFY(screen.shows("Impossible de lire ce fichier Excel."));
    screen.click("Choisir un fichier…");  // the panel is cancelled
    QVERIFY(screen.shows("Impossible de lire ce fichier Excel."));
    pickFile(screen, WorkbookWriter({}).file());
    QVERIFY(screen.shows("Aucune feuille trouvée dans ce fichier."));
    screen.click("Fermer");
    screen.click("Importer un conducteur");
    QVERIFY(screen.shows("Choisir un fichier…"));
    QVERIFY(!screen.shows("Aucune feuille trouvée dans ce fichier."));
}

void ShowScreensTest::workThatNobodyWaitsForChangesNothing() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    screen.computer.files.contents["/Gala.xlsx"] = workbookOf(row(1, {"A"}) + row(2, {"a"}));
    const auto startReading = [&] {
        screen.computer.panels.answers = {"/Gala.xlsx"};
        screen.click("Choisir un fichier…");
        return sheetImportOf(screen)->isReading();
    };
    QVERIFY(startReading());
    change(screen, [](ShowImportViewModel& sheet) { sheet.cancel(); });
    QVERIFY(!sheetImportOf(screen)->hasWorkbook());

    QVERIFY(startReading());
    change(screen, [](ShowImportViewModel&) {});
    change(screen, [](ShowImportViewModel& sheet) { sheet.setRole(0, 1); });
    change(screen, [](ShowImportViewModel& sheet) {
        sheet.setRole(0, 0);
        sheet.setShowName("Bal");
        sheet.cancel();
    });
    QCOMPARE(sheetImportOf(screen)->songCount(), 1);
    QCOMPARE(sheetImportOf(screen)->showName(), "Bal");
    QVERIFY(screen.shows("Titre du morceau"));

    screen.click("Importer");
    screen.click("Fermer");
    screen.computer.time.drain();
    QTRY_VERIFY(!sheetImportOf(screen));
    QVERIFY(screen.state.shows().empty());

    screen.click("Importer un conducteur");
    QVERIFY(startReading());
    screen.click("Fermer");
    screen.computer.time.drain();
    QTRY_VERIFY(!sheetImportOf(screen));
}

void ShowScreensTest::choosingASheetTakesTheRolesBack() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    pickFile(screen, WorkbookWriter({row(1, {"A"}) + row(2, {"a"}), row(5, {"B"})}).file());
    QVERIFY(screen.shows("Feuille"));
    for (int i = 0; i < 6; ++i) {
        screen.press(Qt::Key_Tab);  // onto the chooser of the column, and round
    }
    screen.click("Ignorer");
    QTRY_VERIFY(screen.shows("Titre du morceau"));
    screen.click("Titre du morceau");
    screen.computer.time.drain();
    QCOMPARE(sheetImportOf(screen)->songCount(), 1);
    screen.click("Feuille 1");
    QTRY_VERIFY(screen.shows("Feuille 2"));
    screen.click("Feuille 2");
    QCOMPARE(sheetImportOf(screen)->selectedSheetIndex(), 1);
    QVERIFY(screen.shows("Ignorer"));
    QVERIFY(screen.shows("Ligne 5"));
    screen.click("Diminuer");
    QCOMPARE(sheetImportOf(screen)->headerRow(), 4);
    QCOMPARE(sheetImportOf(screen)->startRow(), 6);
}

void ShowScreensTest::absurdColumnsAreBounded() {
    Screen screen(noShows);
    screen.click("Importer un conducteur");
    pickFile(screen, workbookOf("<row r=\"1\"><c r=\"zzzzzzzzzzzzz1\"><v>1</v></c></row>"));
    QCOMPARE(sheetImportOf(screen)->columns()->rowCount(),
             int(RunSheetColumnListModel::maximumListed));
    QVERIFY(sheetImportOf(screen)->unlistedColumns() > 0);
    // Only what is in sight is made.
    QVERIFY(Screen::items(screen.window->contentItem()).size() < 2000);
}

QTEST_MAIN(ShowScreensTest)
#include "ShowScreensTest.moc"
