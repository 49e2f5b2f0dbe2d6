#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>

#include "display/ReceiverViewModel.h"
#include "kit/ScreenContext.h"
#include "platform/simulated/SimulatedPlatform.h"
#include "state/AppState.h"
#include "support/Shows.h"
#include "sync/AdminBroadcaster.h"

#include <memory>
#include <optional>

using namespace tessivo;

namespace {

/// A station, and an admin elsewhere on its network that tells what a test makes it.
class Station {
public:
    Station() {
        setScreenContext(engine, context);
        QQmlComponent component(&engine);
        component.setData("import Tessivo.Display\nReceiverViewModel {}", QUrl());
        receiver.reset(qobject_cast<ReceiverViewModel*>(component.create()));
        QVERIFY2(receiver, qPrintable(component.errorString()));
    }

    void startAdmin() { startAdmin(elsewhere); }
    void startAdmin(SimulatedComputer& at) {
        admin.emplace(at, computer.time);
        admin->startChecking();
        computer.time.advance(AdminBroadcaster::checkDuration + 1.0);
    }

    void tell(const Show& show, std::int64_t index, Instant startedAt) {
        admin->update({show, index, startedAt});
        computer.time.advance(0.01);
    }

    SimulatedPlatform computer;
    SimulatedComputer& elsewhere = computer.network.addComputer("Ailleurs");
    SimulatedComputer& backup = computer.network.addComputer("Secours");
    std::optional<AdminBroadcaster> admin;

    AppState state{computer};
    ScreenContext context{state, computer};
    QQmlEngine engine;
    std::unique_ptr<ReceiverViewModel> receiver;  // ends before what it stands on
};

Show show() {
    Show made = showWithSongs(3);
    made.songs[0].duration = 240;
    return made;
}

}  // namespace

class ReceiverTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsAnAdminAndLosesIt();
    void countsByItsOwnClockOnceASecond();
    void countsByTheClockOfTheAdminOnceThatIsKnown();
    void tellsSilenceAndItsAge();
    void leadsOnWhereTheAdminStopped();
};

void ReceiverTest::followsAnAdminAndLosesIt() {
    Station station;
    ReceiverViewModel& receiver = *station.receiver;
    QCOMPARE(receiver.status(), ReceiverViewModel::Searching);
    for (int round = 0; round < 2; ++round) {
        station.startAdmin();
        QCOMPARE(receiver.status(), ReceiverViewModel::Waiting);
        QVERIFY(!receiver.hasPicture());
        QVERIFY(!station.computer.stayAwake.isAwake);
        station.tell(show(), 1, station.computer.time.now());
        QCOMPARE(receiver.status(), ReceiverViewModel::Following);
        QCOMPARE(receiver.content()->current().title, QStringLiteral("Morceau 2"));
        QCOMPARE(receiver.passages()->rows()->rowCount(), 3);
        QCOMPARE(receiver.passages()->currentRow(), 1);
        QVERIFY(station.computer.stayAwake.isAwake);
        station.admin.reset();
        station.computer.time.advance(2.0);
        // The last picture stays.
        QCOMPARE(receiver.status(), ReceiverViewModel::Searching);
        QVERIFY(receiver.hasPicture());
        QCOMPARE(receiver.content()->current().title, QStringLiteral("Morceau 2"));
        QCOMPARE(receiver.passages()->rows()->rowCount(), 3);
        QVERIFY(station.computer.stayAwake.isAwake);
        station.computer.time.advance(FollowedShow::keepingTime);
        QVERIFY(!receiver.hasPicture());
        QCOMPARE(receiver.passages()->rows()->rowCount(), 0);
        QVERIFY(!station.computer.stayAwake.isAwake);
    }
    station.startAdmin();
    station.tell(show(), 0, station.computer.time.now());
    QVERIFY(station.computer.stayAwake.isAwake);
    station.receiver.reset();
    QVERIFY(!station.computer.stayAwake.isAwake);
}

void ReceiverTest::countsByItsOwnClockOnceASecond() {
    Station station;
    station.startAdmin();
    SimulatedMainQueue& time = station.computer.time;
    const StageContent& content = *station.receiver->content();
    station.tell(show(), 0, time.now() + -100.7);
    QCOMPARE(content.countdown(), QStringLiteral("2:20"));
    time.advance(0.9);
    QCOMPARE(content.countdown(), QStringLiteral("2:20"));
    time.advance(0.1);
    QCOMPARE(content.countdown(), QStringLiteral("2:19"));
    QVERIFY(!content.urgent());
    time.advance(150.0);
    QCOMPARE(content.countdown(), QStringLiteral("0:00"));
    QVERIFY(content.urgent());
    station.tell(show(), 1, time.now());
    QCOMPARE(content.countdown(), QString());
}

void ReceiverTest::countsByTheClockOfTheAdminOnceThatIsKnown() {
    Station station;
    station.startAdmin();
    SimulatedMainQueue& time = station.computer.time;
    const ReceiverViewModel& receiver = *station.receiver;
    const StageContent& content = *station.receiver->content();
    station.tell(show(), 0, time.now() + 499.3);
    QCOMPARE(content.countdown(), QStringLiteral("12:19"));
    time.advance(1.0);
    station.tell(show(), 0, time.now() + 600.0);
    QCOMPARE(content.countdown(), QStringLiteral("4:00"));
    time.advance(11.5);
    QCOMPARE(content.countdown(), QStringLiteral("3:50"));
    QCOMPARE(receiver.clockFault(), QStringLiteral("10 min de retard"));
    time.setWallClock(time.now() + 3600.5);
    time.advance(1.0);
    QCOMPARE(content.countdown(), QStringLiteral("3:49"));
    QCOMPARE(receiver.clockFault(), QStringLiteral("50 min 1 s d'avance"));
    for (const auto& [more, fault] :
         {std::pair{-2998.0, "3 s d'avance"}, {-2.0, ""}, {3000.0, "50 min 1 s d'avance"}}) {
        time.setWallClock(time.now() + more);
        time.advance(1.0);
        QCOMPARE(receiver.clockFault(), QString(fault));
    }
    // A song begins while the connection is broken.
    const Instant before = time.now() + -3000.9;
    for (const double pause : {1.8, 0.0}) {
        station.tell(show(), 1, before);
        time.advance(pause);
    }
    station.elsewhere.cutConnections();
    station.tell(show(), 0, time.now() + -3001.4);
    time.advance(2.0);
    QCOMPARE(content.countdown(), QStringLiteral("3:58"));
    // The same computer again, then another one, whose clock nobody knows.
    for (const auto& [computer, countdown] :
         {std::pair{&station.elsewhere, "3:40"}, {&station.backup, "0:00"}}) {
        station.admin.reset();
        station.startAdmin(*computer);
        station.tell(show(), 0, time.now() + -3020.9);
        QCOMPARE(content.countdown(), QString(countdown));
    }
}

void ReceiverTest::tellsSilenceAndItsAge() {
    Station station;
    const ReceiverViewModel& receiver = *station.receiver;
    SimulatedMainQueue& time = station.computer.time;
    time.advance(60.0);
    station.startAdmin();
    time.advance(FollowedShow::patience - 2.0);
    QVERIFY(!receiver.adminIsMute());
    time.advance(3.0);
    QVERIFY(receiver.adminIsMute());  // without ever having told anything
    station.tell(show(), 0, time.now());
    for (const auto& [wait, words] :
         {std::pair{2.95, ""}, {0.1, "3 s"}, {1.0, "4 s"}, {61.0, "1 min 5 s"}}) {
        time.advance(wait);
        QCOMPARE(receiver.silence(), QString(words));
    }
    QVERIFY(receiver.adminIsMute());
    station.tell(show(), 0, time.now());
    QCOMPARE(receiver.silence(), QString());
    QVERIFY(!receiver.adminIsMute());
}

void ReceiverTest::leadsOnWhereTheAdminStopped() {
    Station station;
    SimulatedMainQueue& time = station.computer.time;
    ReceiverViewModel& receiver = *station.receiver;
    const Show told = show();
    station.startAdmin();
    for (const std::int64_t song : {1, 0}) {
        station.tell(told, song, time.now() + 600.0);  // the admin's clock is ahead
    }
    time.advance(10.0);
    station.state.importShow(told);
    QVERIFY(!receiver.hasOtherVersion());
    station.state.renameActiveShow("Répétition");
    QVERIFY(receiver.hasOtherVersion());
    station.admin.reset();
    time.advance(2.0);
    receiver.prepareTakeOver();
    station.context.goOn();
    QVERIFY(*station.state.activeShow() == told);
    QCOMPARE(station.state.currentSongRemainingSeconds(), std::optional<std::int64_t>(228));
}

QTEST_MAIN(ReceiverTest)
#include "ReceiverTest.moc"
