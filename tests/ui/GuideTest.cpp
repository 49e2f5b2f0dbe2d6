#include <QBuffer>
#include <QFile>
#include <QPdfWriter>
#include <QProcess>
#include <QQuickStyle>
#include <QTest>

#include "support/Screen.h"
#include "support/Shows.h"
#include "support/TemporaryFolder.h"
#include "ui/guide/GuideViewModel.h"

#include <memory>

using namespace tessivo;

namespace {

QByteArray paperOf(const GuideViewModel& guide, const char* title) {
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    QPdfWriter paper(&bytes);
    paper.setPageSize(QPageSize(QPageSize::A4));
    guide.paint(paper, int(guide.titles().indexOf(title)));
    return bytes.data();
}

}  // namespace

class GuideTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QQuickStyle::setStyle("Basic"); }
    void theKeyboardOpensReadsAndClosesIt();
    void linksAndPicturesAreThere();
    void theCheckListIsOnePage();
    void picturesLeaveTheMarginWhite();
    void aFailedPrintIsTold();
};

void GuideTest::aFailedPrintIsTold() {
    Screen screen(concert());
    screen.press(Qt::Key_F1);
    QQuickWindow* guide = Screen::windowTitled("Tessivo — Guide");
    QVERIFY(QTest::qWaitForWindowActive(guide));
    const int type = qmlTypeId("Tessivo.Ui", 1, 0, "GuideViewModel");
    Q_EMIT screen.engine.singletonInstance<GuideViewModel*>(type)->printFailed();
    QTRY_VERIFY(Screen::find(guide, "L'impression n'a pas abouti."));
    QTest::keyClick(guide, Qt::Key_Escape);
    QTRY_VERIFY(!Screen::find(guide, "L'impression n'a pas abouti."));
    QVERIFY(guide->isVisible());
}

void GuideTest::theKeyboardOpensReadsAndClosesIt() {
    Screen screen(concert());
    screen.click("Vue live");
    const auto song = screen.state.activeSongIndex();
    screen.press(Qt::Key_F1);
    QQuickWindow* guide = Screen::windowTitled("Tessivo — Guide");
    QVERIFY(QTest::qWaitForWindowActive(guide));
    QVERIFY(Screen::texts(guide).contains("Choisir le rôle de l'ordinateur"));
    QTest::keyClick(guide, Qt::Key_Down);
    QTRY_VERIFY(Screen::find(guide, "La setlist"));
    guide->grabWindow();  // lays out
    const QQuickItem* heading = Screen::find(guide, "La setlist");
    const double top = heading->mapToScene({}).y();
    QTest::keyClick(guide, Qt::Key_PageDown);
    QVERIFY(heading->mapToScene({}).y() < top);
    QTest::keyClick(guide, Qt::Key_PageUp);
    QCOMPARE(heading->mapToScene({}).y(), top);

    // In front of the live screen it leaves the show its keys.
    QTest::keyClick(guide, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), song + 1);
    QTest::keyClick(guide, Qt::Key_Left);
    QCOMPARE(screen.state.activeSongIndex(), song);
    QTest::keyClick(guide, Qt::Key_Escape);
    QVERIFY(!guide->isVisible());
    QTest::keyClick(screen.window, Qt::Key_Space);
    QCOMPARE(screen.state.activeSongIndex(), song + 1);

    // It opens where it was left.
    screen.window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(screen.window));
    screen.press(Qt::Key_F1);
    QTRY_VERIFY(guide->isVisible());
    QVERIFY(Screen::find(guide, "La setlist"));
}

void GuideTest::linksAndPicturesAreThere() {
    static const QRegularExpression link("\\]\\(([^)]*)\\)");
    const GuideViewModel guide;
    QCOMPARE_GT(guide.titles().size(), 1);
    int links = 0;
    int pictures = 0;
    for (int chapter = 0; chapter < guide.titles().size(); ++chapter) {
        for (const QVariant& entry : guide.blocks(chapter)) {
            const auto block = entry.value<GuideBlock>();
            if (block.text.isEmpty()) {
                const QImage picture(":" + block.picture.path());
                QVERIFY2(!picture.isNull(), qPrintable(block.picture.toString()));
                QVERIFY2(!block.spoken.isEmpty(), qPrintable(block.picture.toString()));
                ++pictures;
            }
            for (auto found = link.globalMatch(block.text); found.hasNext(); ++links) {
                const QString target = found.next().captured(1);
                QVERIFY2(guide.chapterOf(target) >= 0, qPrintable(target));
            }
        }
    }
    QVERIFY(links >= guide.titles().size() - 1 && pictures > 0);
}

void GuideTest::theCheckListIsOnePage() {
    const GuideViewModel guide;
    QCOMPARE(paperOf(guide, "Avant le show").count("/Type /Page\n"), 1);
    QCOMPARE_GT(paperOf(guide, "Suivre un timecode").count("/Type /Page\n"), 1);
}

void GuideTest::picturesLeaveTheMarginWhite() {
    const test::TemporaryFolder folder;
    folder.write("guide.pdf", paperOf(GuideViewModel(), "Suivre un timecode").toStdString());
    const QString path = QString::fromStdString(folder.path());
    QProcess::execute("pdftoppm", {"-gray", "-r", "20", path + "/guide.pdf", path + "/page"});
    QCOMPARE_GT(folder.names().size(), 1U);
    for (const std::string& name : folder.names()) {
        const QImage page(path + "/" + QString::fromStdString(name));
        for (int y = 0; y < page.height(); ++y) {
            QCOMPARE(qGray(page.pixel(page.width() - 5, y)), 255);
        }
    }
}

QTEST_MAIN(GuideTest)
#include "GuideTest.moc"
