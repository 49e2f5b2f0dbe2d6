#include <QProcess>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"
#include "support/TemporaryFolder.h"

#include <string>

using namespace tessivo;

namespace {

Show gala() {
    Show show = showWithSongs(60);
    show.name = "Gala d'été";
    show.mics = {"HF 1", "HF 2"};
    for (std::size_t i = 0; i < show.songs.size(); ++i) {
        show.songs[i].duration = 180;
        const std::string name = i % 2 ? "Karim Benoît" : "Léa";
        show.songs[i].guests.push_back({Uuid::random(), name, "HF 1", "Mix 3", "-3 dB"});
    }
    show.songs[0].title = "=1+1;\"Été\"";
    show.songs[1].duration.reset();
    return show;
}

/// Chooses this command of the file menu, and answers the question for the hour.
void ask(const Screen& screen, const char* command, const char* hour) {
    screen.click("Fichier");
    QTRY_VERIFY(screen.item(command));
    screen.click(command);
    QTRY_VERIFY(screen.shows("Début prévu"));
    screen.type(hour);
    screen.press(Qt::Key_Return);
}

/// What a program prints about a file with these bytes, whose path comes last.
QString printed(const QString& program, QStringList arguments, const std::string& bytes) {
    const test::TemporaryFolder folder;
    folder.write("file", bytes);
    QProcess process;
    process.start(program, arguments
                               << QString::fromStdString(folder.path("file"))
                               << (program == "pdftotext" ? QStringList("-") : QStringList()));
    return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput())
                                     : process.errorString();
}

}  // namespace

class PaperTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void thePdfHoldsRunSheetAndPlot();
    void theSpreadsheetIsReadBack();
    void whatIsTooMuchForARowOrAPageGoesOn();
    void asksAgainForAnHourAndTellsAFailure();
};

void PaperTest::thePdfHoldsRunSheetAndPlot() {
    Screen screen(gala());
    screen.computer.panels.answers = {"/gala.pdf"};
    ask(screen, "Exporter en PDF…", "20h30");
    QTRY_COMPARE(screen.computer.files.contents.count("/gala.pdf"), 1U);
    QCOMPARE(screen.computer.panels.saveRequests.back().proposedName, "Gala d'été.pdf");
    const QString text =
        printed("pdftotext", {"-layout"}, screen.computer.files.contents["/gala.pdf"]);
    const QStringList pages = text.split('\f', Qt::SkipEmptyParts);
    QVERIFY(pages.size() >= 4);
    for (qsizetype i = 0; i < pages.size(); ++i) {
        const QString number = QString("%1/%2").arg(i + 1).arg(pages.size());
        QVERIFY2(pages[i].contains(number) && pages[i].contains("Gala d'été") &&
                     pages[i].contains(" mai 2026"),
                 qPrintable(pages[i]));
    }
    for (const Song& song : screen.state.activeShow()->songs) {
        QCOMPARE(text.count(QRegularExpression(
                     QRegularExpression::escape(QString::fromStdString(song.title)) + "(?!\\d)")),
                 2);
    }
    const QRegularExpression first(
        "1 +=1\\+1;\"Été\" +20:30 +3:00 +20:33 +Léa +HF 1 +Mix 3 +-3 dB");
    QVERIFY2(pages[0].contains(first), qPrintable(pages[0]));
    QVERIFY(text.contains(QRegularExpression("60 +Morceau 60 +≥ 23:24 +3:00 +≥ 23:27")));
    QCOMPARE(text.count("serré"), 59 + pages.filter("Plan micros").size());  // and the legend
}

void PaperTest::theSpreadsheetIsReadBack() {
    Screen screen(gala());
    screen.computer.panels.answers = {"/gala.csv"};
    ask(screen, "Exporter en CSV…", "20:30");
    QTRY_COMPARE(screen.computer.files.contents.count("/gala.csv"), 1U);
    const QString rows =
        printed("python3",
                {"-c",
                 "import csv, sys\n"
                 "rows = list(csv.reader(open(sys.argv[1], encoding='utf-8-sig', newline=''),"
                 " delimiter=';'))\n"
                 "print(len(rows), *rows[0], sep='|')\n"
                 "print(*rows[1], sep='|')\nprint(*rows[2], sep='|')\nprint(*rows[60], sep='|')"},
                screen.computer.files.contents["/gala.csv"]);
    QCOMPARE(rows,
             "61|N°|Titre|Timecode|Début|Durée|Fin|Guest|Micro|IEM|Volume\n"
             "1|'=1+1;\"Été\"||20:30|0:03:00|20:33|Léa|HF 1|Mix 3|-3 dB\n"
             "2|Morceau 2||20:33|||Karim Benoît|HF 1|Mix 3|-3 dB\n"
             "60|Morceau 60||≥ 23:24|0:03:00|≥ 23:27|Karim Benoît|HF 1|Mix 3|-3 dB\n");
}

void PaperTest::whatIsTooMuchForARowOrAPageGoesOn() {
    Show show = showWithSongs(1);
    show.mics.clear();
    for (int i = 11; i <= 30; ++i) {
        const std::string number = std::to_string(i);
        show.mics.push_back("HF " + number);
        show.songs[0].guests.push_back({Uuid::random(), "Nom " + number, show.mics.back(), "", {}});
    }
    Screen screen(show);
    screen.computer.panels.answers = {"/foule.pdf"};
    ask(screen, "Exporter en PDF…", "");
    QTRY_COMPARE(screen.computer.files.contents.count("/foule.pdf"), 1U);
    const QString text =
        printed("pdftotext", {"-layout"}, screen.computer.files.contents["/foule.pdf"]);
    const QStringList pages = text.split('\f', Qt::SkipEmptyParts);
    QCOMPARE(pages.size(), 3);
    const auto columnOf = [&](const char* name) {
        const qsizetype at = pages[0].indexOf(name);
        return at - pages[0].lastIndexOf('\n', at);
    };
    QVERIFY2(pages[0].contains("Morceau 1 (suite)"), qPrintable(text));
    QCOMPARE(columnOf("Nom 30"), columnOf("Nom 11"));
    QVERIFY2(pages[2].contains("Micros 13 à 20") && pages[2].contains("Nom 30"), qPrintable(text));
}

void PaperTest::asksAgainForAnHourAndTellsAFailure() {
    Screen screen(gala());
    screen.computer.files.isFull = true;
    screen.computer.panels.answers = {"/plein.csv"};
    ask(screen, "Exporter en CSV…", "tôt");
    QTRY_VERIFY(!screen.texts().filter("« tôt » n'est pas une heure").isEmpty());
    QVERIFY(screen.computer.panels.saveRequests.empty());
    QTRY_VERIFY(screen.window->activeFocusItem()->property("placeholderText").isValid());
    screen.press(Qt::Key_A, Qt::ControlModifier);
    screen.type("19h");
    screen.press(Qt::Key_Return);
    QTRY_VERIFY(!screen.texts().filter("/plein.csv").isEmpty());
    screen.press(Qt::Key_Escape);
    ask(screen, "Exporter en PDF…", "");
    QTRY_COMPARE(screen.computer.panels.saveRequests.size(), 2U);
    screen.click("Fichier");
    QTRY_VERIFY(screen.item("Exporter en CSV…"));
    screen.click("Exporter en CSV…");
    QTRY_COMPARE(screen.window->activeFocusItem()->property("text").toString(), "19:00");
}

QTEST_MAIN(PaperTest)
#include "PaperTest.moc"
