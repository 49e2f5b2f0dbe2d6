#include <QSignalSpy>
#include <QTest>

#include "display/PassagesContent.h"
#include "display/StageContent.h"
#include "support/Shows.h"

using namespace tessivo;

class StageContentTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void announcesOnlyWhatDiffers();
    void keepsRowsWhileStepping();
    void cutsTheLongestTextsOfManyGuests();
    void joinsASongToTheOneWhoseMicrophoneItTakes();
};

void StageContentTest::announcesOnlyWhatDiffers() {
    StageContent content;
    Show show = showWithSongs(4);
    content.presentShow(&show, 1);
    content.presentRemaining(11);
    content.presentShow(&show, 9);
    QCOMPARE(content.panel(), StageContent::Finished);
    content.presentShow(&show, 1);
    QCOMPARE(content.panel(), StageContent::Songs);
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
    show.name = "Gala";
    content.presentShow(&show, 1);
    QCOMPARE(contentChanged.size(), 1);
    QVERIFY(content.urgent());
    content.presentRemaining(9);
    QCOMPARE(urgentChanged.size(), 1);
    content.presentRemaining(std::nullopt);
    QCOMPARE(content.countdown(), QString());
    QVERIFY(!content.urgent());
}

void StageContentTest::keepsRowsWhileStepping() {
    StageContent content;
    Show show = showWithSongs(6);
    show.songs[2].title = std::string(2000, 'x');
    content.presentShow(&show, 2);
    QCOMPARE(content.current().title, QString(300, 'x') + "…");
    show.songs[3].title = "🎸🎸🎸🎸🎸🎸🎸🎸🎸";
    content.presentShow(&show, 2);
    QCOMPARE(content.next()->rows().front().title, QString("🎸🎸🎸🎸🎸🎸🎸🎸…"));
    QCOMPARE(content.following(), content.next()->rows().front());
    QCOMPARE(content.current().position, 3);
    QCOMPARE(content.past()->rowCount(), 2);
    QCOMPARE(content.next()->rowCount(), 3);
    QCOMPARE(content.next()->rows().front().position, 4);

    const QSignalSpy inserted(content.next(), &QAbstractItemModel::rowsInserted);
    const QSignalSpy removed(content.next(), &QAbstractItemModel::rowsRemoved);
    content.presentShow(&show, 3);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(inserted.size(), 0);
    QCOMPARE(content.past()->rows().back().title, QString(300, 'x') + "…");
}

void StageContentTest::cutsTheLongestTextsOfManyGuests() {
    Show show = showWithSongs(1);
    auto& guests = show.songs[0].guests;
    guests.assign(61, {.name = "Ana", .mic = "HF 12", .iem = "IEM 3", .volume = "-3 dB"});
    guests[1].name = std::string(10'000'000, 'x');
    guests[2].name = "🎤 Éléonore";
    guests[3].name.clear();
    StageContent content;
    content.presentShow(&show, 0);
    const auto& shown = content.current().guests;
    QCOMPARE(shown.size(), 60U);
    QCOMPARE(shown[1].name, QString(300, 'x') + "…");
    QCOMPARE(shown[2].name, QString("🎤 Éléonore"));
    QCOMPARE(shown[3].stageLine, QString("— — HF 12 · IEM 3 · vol -3 dB"));

    for (Guest& guest : guests) {
        guest.name = "⭐⭐" + std::string(200, 'y');
    }
    content.presentShow(&show, 0);
    for (const GuestInfo& guest : shown) {
        QCOMPARE(guest.name, QString(23, 'y') + "…");
        QCOMPARE(guest.stageLine, guest.name + " — HF 12 · IEM 3 · vol -3 dB");
    }
}

void StageContentTest::joinsASongToTheOneWhoseMicrophoneItTakes() {
    Show show = showWithSongs(3);
    show.mics = {"HF 1", "HF 2"};
    for (const auto& [song, mic] :
         {std::pair{0U, "HF 1"}, {1U, "HF 1"}, {0U, "HF 2"}, {2U, "HF 2"}}) {
        const std::string name = std::to_string(song);
        show.songs[song].guests.push_back({Uuid::random(), name, mic, "", {}});
    }
    PassagesContent passages;
    passages.presentShow(&show, handOvers(show));
    const auto lines = [&](int column) {
        QString text;
        for (const PassageRow& row : passages.rows()->rows()) {
            const PassageCell cell = row.cell(column);
            text += QString("%1 %2 ").arg(cell.lineAbove).arg(cell.lineBelow);
        }
        return text.trimmed();
    };
    QCOMPARE(lines(0), "0 5 5 0 0 0");  // from one song to the next the thicker line
    QCOMPARE(lines(1), "0 2 2 2 2 0");
}

QTEST_GUILESS_MAIN(StageContentTest)
#include "StageContentTest.moc"
