#include <QProcess>

#include "platform/network/LocalNetwork.h"
#include "platform/network/QuestionRhythm.h"
#include "platform/network/ServiceDialer.h"
#include "platform/network/ServiceInquiry.h"
#include "platform/qt/QtMainQueue.h"
#include "support/EventLoop.h"
#include "support/NetworkWorld.h"

#include <doctest/doctest.h>
#include <net/if.h>
#include <netinet/in.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <optional>

using namespace tessivo;
using test::Connected;
using test::End;
using test::Reports;
using State = StreamConnection::State;

namespace {

/// Two programs on this computer, as its responder sees them.
class LocalWorld final : public test::NetworkWorld {
public:
    LocalNetwork& here() override { return here_; }
    LocalNetwork& there() override { return there_; }
    bool runUntil(const std::function<bool()>& condition) override {
        return test::runUntil(condition);
    }

private:
    QtMainQueue queue_;
    LocalNetwork here_{queue_};
    LocalNetwork there_{queue_};
};

/// Stops, starts, hangs or resumes the message bus or the responder.
void servers(const std::string& orders) {
    REQUIRE(std::getenv("TESSIVO_SERVERS") != nullptr);
    REQUIRE(std::system((std::getenv("TESSIVO_SERVERS") + (" " + orders)).c_str()) == 0);
}

/// Publishes a service of another program, on a port that is closed.
std::unique_ptr<QProcess> publish(const char* name, const std::string& type,
                                  const QStringList& options = {}) {
    auto program = std::make_unique<QProcess>();
    program->start(QStringLiteral("avahi-publish"),
                   options + QStringList{QStringLiteral("-s"), QString::fromUtf8(name),
                                         QString::fromStdString(type), QStringLiteral("9")});
    return program;
}

double secondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

std::ptrdiff_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

}  // namespace

std::unique_ptr<test::NetworkWorld> test::makeNetworkWorld() {
    return std::make_unique<LocalWorld>();
}

TEST_CASE("a service is advertised under the computer's name, also when that changes") {
    Connected stream;
    REQUIRE(stream.isOpen());
    for (const std::string name : {"Régie son \\ 1.2", "tessivo-test"}) {
        QString escaped = QString::fromStdString(name);
        escaped.replace('\\', QLatin1String("\\\\")).replace('.', QLatin1String("\\."));
        QProcess::execute(QStringLiteral("avahi-set-host-name"), {escaped});
        CHECK(stream.runUntil([&] {
            return stream.reports.all.back() ==
                   std::vector{ServiceEndpoint{name, stream.type, "local"}};
        }));
    }
}

TEST_CASE("a service that has just gone here isn't taken for another's, but a new one is seen") {
    struct Case {
        bool isOfKilledProgram;
        bool isTakenAtOnce;
    };
    for (const Case& end : {Case{false, false}, Case{false, true}, Case{true, false}}) {
        CAPTURE(end.isOfKilledProgram);
        CAPTURE(end.isTakenAtOnce);
        LocalWorld world;
        const std::string type = test::freshServiceType();
        const auto listener = world.here().makeListener(type);
        auto first = end.isOfKilledProgram ? nullptr : world.here().makeListener(type);
        const auto program = end.isOfKilledProgram ? publish("tessivo-test", type) : nullptr;
        if (first) {
            first->start();
        }
        const Reports witness(world.there(), type);
        REQUIRE(world.runUntil([&] { return witness.count() == 1U; }));
        if (program) {
            program->kill();
            program->waitForFinished();
        }
        first.reset();
        if (end.isTakenAtOnce) {
            listener->start();
        }
        const Reports own(world.here(), type);
        if (!end.isTakenAtOnce) {
            const auto gone = std::chrono::steady_clock::now() +
                              std::chrono::duration<double>(2 * Withdrawals::ownSeconds);
            CHECK(world.runUntil([&] { return own.count() == 0U && witness.count() == 0U; }));
            CHECK(world.runUntil([&] { return std::chrono::steady_clock::now() > gone; }));
            CHECK(std::ranges::all_of(own.all, [](const auto& set) { return set.empty(); }));
            listener->start();
        }
        CHECK(world.runUntil([&] { return own.count() == 1U; }));
    }
}

TEST_CASE("what was asked of the responder holds through all that happens to it and to the bus") {
    struct Case {
        std::vector<const char*> away;
        std::vector<const char*> back;
    };
    for (const Case& change : {Case{{"stop avahi"}, {"start avahi"}},
                               Case{{"stop avahi", "stop bus"}, {"start bus", "start avahi"}},
                               Case{{"stop bus"}, {"stop avahi", "start bus", "start avahi"}},
                               Case{{"hang avahi"}, {"resume avahi"}},
                               Case{{"hang avahi"}, {"stop avahi", "start avahi"}}}) {
        CAPTURE(change.away.back());
        CAPTURE(change.back.front());
        Connected stream;
        REQUIRE(stream.isOpen());
        std::ranges::for_each(change.away, servers);
        const auto begin = std::chrono::steady_clock::now();
        {
            LocalWorld shortWorld;
            const Reports reports(shortWorld.here(), stream.type);
            const auto listener = shortWorld.there().makeListener(stream.type);
            listener->start();
            QCoreApplication::processEvents();
        }
        // A tenth of what a call waits for a responder that hangs.
        CHECK(std::chrono::steady_clock::now() - begin < std::chrono::milliseconds(2500));
        LocalWorld lateWorld;  // programs that start meanwhile
        const auto late = lateWorld.there().makeListener(stream.type);
        late->start();
        const Reports lateReports(lateWorld.here(), stream.type);
        const auto tells = [&](Network::Trouble trouble) {
            return lateWorld.runUntil([&] { return lateWorld.here().trouble() == trouble; });
        };
        CHECK(tells(Network::Trouble::responderSilent));
        const auto reportCount = stream.reports.all.size();
        End undialled;
        undialled.open(stream.world->here().connect(stream.reports.all.back().front()));
        CHECK(stream.runUntil([&] { return undialled.is(State::failed); }));
        std::ranges::for_each(change.back, servers);
        CHECK(tells(Network::Trouble::none));
        CHECK(stream.runUntil([&] {
            return stream.reports.count() == 2U && stream.reports.all.size() > reportCount &&
                   lateReports.count() == 2U;
        }));
        CHECK(stream.near.is(State::ready));  // an open connection needs no responder
    }
}

TEST_CASE("every way on which a service was seen leads to it, those with a scope included") {
    Connected stream;
    REQUIRE(stream.isOpen());
    const auto cable = static_cast<int>(if_nametoindex("cable0"));
    const auto loopback = static_cast<int>(if_nametoindex("lo"));
    std::vector<ServiceSighting> sightings{{loopback, ServiceSighting::ipv4}};
    if (cable != 0) {
        sightings.push_back({cable, ServiceSighting::ipv4});
        sightings.push_back({cable, ServiceSighting::ipv6});
    }
    QtMainQueue queue;
    SocketEvents events;
    Responder responder(queue);
    REQUIRE(stream.runUntil([&] { return responder.hostName().has_value(); }));
    for (const ServiceSighting& sighting : sightings) {
        CAPTURE(sighting.interface);
        CAPTURE(sighting.protocol);
        ServiceDialer dialer(responder, events, queue, stream.reports.all.back().front(),
                             {sighting}, [] { return ServiceDialer::timeLimit; });
        FileDescriptor socket;
        dialer.start([&](FileDescriptor opened) { socket = std::move(opened); });
        REQUIRE(stream.runUntil([&] { return socket.isOpen(); }));
        sockaddr_in6 peer{};
        socklen_t size = sizeof(peer);
        REQUIRE(getpeername(socket.value(), reinterpret_cast<sockaddr*>(&peer), &size) == 0);
        const bool isIPv6 = sighting.protocol == ServiceSighting::ipv6;
        CHECK(peer.sin6_family == (isIPv6 ? AF_INET6 : AF_INET));
        CHECK((!isIPv6 || peer.sin6_scope_id == static_cast<std::uint32_t>(cable)));
    }
}

TEST_CASE("whoever takes the first service comes past one that refuses, or says nothing for long") {
    QProcess silentComputer;
    silentComputer.start(
        QStringLiteral("avahi-publish"),
        {QStringLiteral("-a"), QStringLiteral("silent.local"), QStringLiteral("10.77.0.77")});
    for (const QStringList& options :
         {QStringList(), QStringList{QStringLiteral("--host=silent.local")}}) {
        CAPTURE(options.size());
        LocalWorld world;
        const std::string type = test::freshServiceType();
        const auto dead = publish("a dead one", type, options);
        const auto listener = world.there().makeListener(type);
        listener->start();
        const Reports reports(world.here(), type);
        REQUIRE(world.runUntil([&] { return reports.count() == 2U; }));
        const auto begin = std::chrono::steady_clock::now();
        const auto callFirst = [&] {
            End end;
            end.open(world.here().connect(reports.all.back().front()));
            CHECK(world.runUntil([&] { return !end.states.empty(); }));
            return end.states.front() == State::ready;
        };
        const auto reportCount = reports.all.size();
        if (!callFirst()) {
            REQUIRE(world.runUntil([&] { return reports.all.size() > reportCount; }));
            CHECK(callFirst());
        }
        CHECK(secondsSince(begin) < 2.0);
        dead->kill();
        dead->waitForFinished();
    }
    silentComputer.kill();
    silentComputer.waitForFinished();
}

TEST_CASE("whoever wants none but one that refuses hears of it again, but not without a pause") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    const auto dead = publish("a dead one", type);
    const auto own = world.here().makeListener(type);
    own->start();
    Reports reports(world.here(), type);
    REQUIRE(world.runUntil([&] { return reports.count() == 2U; }));
    const auto begin = std::chrono::steady_clock::now();
    int count = 0;
    while (secondsSince(begin) < 4.0) {
        const auto reportCount = reports.all.size();
        End end;
        end.open(world.here().connect({"a dead one", type, "local"}));
        REQUIRE(world.runUntil([&] { return end.is(State::failed); }));
        ++count;
        REQUIRE(world.runUntil([&] { return reports.all.size() > reportCount; }));
    }
    CHECK(count > 2);  // two in each round
    CHECK(count < 12);
}

TEST_CASE("a computer is asked itself whether it has a service, past what others remember of it") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    const auto other = publish("Console FOH (2)", type);
    const Reports reports(world.here(), type);
    REQUIRE(world.runUntil([&] { return reports.count() == 1U; }));
    SocketEvents events;
    sockaddr_storage here{};
    auto& address = reinterpret_cast<sockaddr_in&>(here);
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const ServiceInquiry gone(events, here, {"Console FOH", type, "local"});
    std::optional<ServiceInquiry> there;
    const auto isConfirmed = [&] { return there->wasConfirmed(); };
    const auto ask = [&] {  // again: it says nothing while it makes sure that the name is free
        there.emplace(events, here, ServiceEndpoint{"Console FOH (2)", type, "local"});
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(300);
        test::runUntil([&] { return isConfirmed() || std::chrono::steady_clock::now() > end; });
        return isConfirmed();
    };
    CHECK(world.runUntil(ask));
    CHECK(!gone.wasConfirmed());
}

TEST_CASE("nothing stays open behind a connection, a listener and a browser") {
    auto world = test::makeNetworkWorld();
    std::vector<std::ptrdiff_t> counts;
    for (int round = 0; round < 3; ++round) {
        {
            Connected stream(std::move(world));
            REQUIRE(stream.isOpen());
            world = std::move(stream.world);
        }
        counts.push_back(openFiles());
    }
    CHECK(counts[1] == counts[2]);
}

TEST_CASE("who browses for services makes way for a question that Avahi's pauses would put off") {
    using std::chrono::milliseconds;
    enum Step { joins, leaves };
    struct Case {
        const char* what;
        std::vector<std::pair<int, Step>> steps;  // when, in ms
        int now;
        int question;
    };
    const Case cases[] = {
        {"alone", {{0, joins}}, 10, 15'000},
        {"beside one that has gone", {{0, joins}, {1500, joins}, {1600, leaves}}, 1600, 15'000},
        {"held up a little", {{0, joins}}, 14'850, 15'000},
        {"held up past that", {{0, joins}}, 14'950, 31'000},
        {"held up for a minute", {{0, joins}}, 70'000, 127'000},
        {"away between two questions",
         {{0, joins}, {16'000, leaves}, {20'000, joins}},
         20'000,
         31'000},
        {"away when one was due", {{0, joins}, {14'600, leaves}, {16'000, joins}}, 16'000, 31'000},
        {"away for an hour",
         {{0, joins}, {7'000, leaves}, {3'600'000, joins}},
         3'600'000,
         3'615'000},
    };
    for (const Case& one : cases) {
        CAPTURE(one.what);
        const auto at = [](int when) { return QuestionRhythm::Time{} + milliseconds(when); };
        QuestionRhythm rhythm;
        for (const auto& [when, step] : one.steps) {
            step == joins ? rhythm.join("responder", at(when)) : rhythm.leave(at(when));
        }
        const auto pause = rhythm.nextPause(at(one.now));
        CHECK(pause.begin < at(one.question));
        CHECK(pause.begin > at(one.question - 1000));
        CHECK(pause.end > at(one.question));
        rhythm.join("responder, restarted", at(one.now));
        CHECK(rhythm.nextPause(at(one.now)).begin > at(one.now + 14'000));
        CHECK(rhythm.nextPause(at(one.now)).end < at(one.now + 17'000));
    }
}
