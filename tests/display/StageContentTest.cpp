#include <QSignalSpy>
#include <QTest>

#include "display/StageContent.h"
#include "support/Shows.h"

using namespace tessivo;

class StageContentTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void choosesThePanel_data();
    void choosesThePanel();
    void announcesOnlyWhatDiffers();
    void keepsRowsWhileStepping();
};

void StageContentTest::choosesThePanel_data() {
    QTest::addColumn<int>("songs");
    QTest::addColumn<qint64>("index");
    QTest::addColumn<StageContent::Panel>("panel");
    QTest::newRow("no show") << -1 << qint64(0) << StageContent::WaitingForShow;
    QTest::newRow("empty") << 0 << qint64(0) << StageContent::EmptySetlist;
    QTest::newRow("empty, far") << 0 << qint64(-4) << StageContent::EmptySetlist;
    QTest::newRow("first") << 3 << qint64(0) << StageContent::Songs;
    QTest::newRow("last") << 3 << qint64(2) << StageContent::Songs;
    QTest::newRow("finished") << 3 << qint64(3) << StageContent::Finished;
    QTest::newRow("beyond") << 3 << qint64(INT64_MAX) << StageContent::Finished;
    QTest::newRow("before") << 3 << qint64(INT64_MIN) << StageContent::NotStarted;
}

void StageContentTest::choosesThePanel() {
    QFETCH(int, songs);
    QFETCH(qint64, index);
    StageContent content;
    const Show show = showWithSongs(static_cast<std::size_t>(std::max(songs, 0)));
    content.presentShow(songs < 0 ? nullptr : &show, index);
    QTEST(content.panel(), "panel");
}

void StageContentTest::announcesOnlyWhatDiffers() {
    StageContent content;
    const Show show = showWithSongs(4);
    content.presentShow(&show, 1);
    content.presentRemaining(11);
    const QSignalSpy contentChanged(&content, &StageContent::contentChanged);
    const QSignalSpy currentChanged(&content, &StageContent::currentChanged);
    const QSignalSpy countdownChanged(&content, &StageContent::countdownChanged);
    const QSignalSpy urgentChanged(&content, &StageContent::urgentChanged);

    content.presentShow(&show, 1);
    content.presentRemaining(11);
    QCOMPARE(contentChanged.size() + currentChanged.size() + countdownChanged.size(), 0);
    QCOMPARE(content.countdown(), QStringLiteral("0:11"));
    QVERIFY(!content.urgent());

    content.presentRemaining(10);
    QCOMPARE(countdownChanged.size(), 1);
    QVERIFY(content.urgent());
    content.presentRemaining(9);
    QCOMPARE(urgentChanged.size(), 1);
    content.presentRemaining(std::nullopt);
    QCOMPARE(content.countdown(), QString());
    QVERIFY(!content.urgent());
}

void StageContentTest::keepsRowsWhileStepping() {
    StageContent content;
    const Show show = showWithSongs(6);
    content.presentShow(&show, 2);
    QCOMPARE(content.current().position, 3);
    QCOMPARE(content.past()->rowCount(), 2);
    QCOMPARE(content.next()->rowCount(), 3);
    QCOMPARE(content.next()->rows().front().position, 4);

    const QSignalSpy inserted(content.next(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(content.next(), &QAbstractItemModel::rowsRemoved);
    content.presentShow(&show, 3);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(inserted.size(), 0);
    QCOMPARE(content.past()->rows().back().title, QStringLiteral("Morceau 3"));
}

QTEST_GUILESS_MAIN(StageContentTest)
#include "StageContentTest.moc"
