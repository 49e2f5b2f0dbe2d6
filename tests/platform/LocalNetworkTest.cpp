#include "platform/LocalWorld.h"
#include "platform/dnssd/ServiceDialer.h"

#include <doctest/doctest.h>
#include <fcntl.h>
#include <net/if.h>
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iterator>

extern char** environ;

using namespace tessivo;
using test::Connected;
using test::End;
using test::LocalWorld;
using test::Reports;
using State = StreamConnection::State;

namespace tessivo::test {

std::unique_ptr<NetworkWorld> makeNetworkWorld() {
    return std::make_unique<LocalWorld>();
}

}  // namespace tessivo::test

namespace {

/// A service that another program on this computer advertises, on a port that may be closed.
class ForeignService {
public:
    ForeignService(std::string name, std::string type, std::uint16_t port) {
        std::string command = "avahi-publish";
        std::string option = "-s";
        std::string number = std::to_string(port);
        char* arguments[] = {command.data(), option.data(), name.data(),
                             type.data(),    number.data(), nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        REQUIRE(posix_spawnp(&process_, command.c_str(), &actions, nullptr, arguments, environ) ==
                0);
        posix_spawn_file_actions_destroy(&actions);
    }
    ~ForeignService() {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    ForeignService(const ForeignService&) = delete;
    ForeignService& operator=(const ForeignService&) = delete;

private:
    pid_t process_ = 0;
};

/// Stops or starts the message bus or the responder.
void servers(const std::string& order) {
    REQUIRE(std::getenv("TESSIVO_SERVERS") != nullptr);
    REQUIRE(std::system((std::getenv("TESSIVO_SERVERS") + (" " + order)).c_str()) == 0);
}

std::ptrdiff_t openFiles() {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
}

}  // namespace

TEST_CASE("a service is advertised under the computer's name") {
    Connected stream;
    REQUIRE(stream.isOpen());
    CHECK(stream.reports.all.back().front() ==
          ServiceEndpoint{"tessivo-test", stream.type, "local"});
}

TEST_CASE("whoever has just withdrawn a service doesn't take it for another computer's") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    auto listener = world.here().makeListener(type);
    listener->start();
    const Reports witness(world.there(), type);
    REQUIRE(world.runUntil([&] { return witness.count() == 1U; }));

    listener.reset();
    const Reports own(world.here(), type);
    const auto start = std::chrono::steady_clock::now();
    CHECK(world.runUntil([&] { return own.count() == 0U && witness.count() == 0U; }));
    CHECK(world.runUntil(
        [&] { return std::chrono::steady_clock::now() > start + 2 * Withdrawals::duration; }));
    CHECK(std::ranges::all_of(own.all, [](const auto& services) { return services.empty(); }));

    // One that is there again, under the same name, is seen.
    const auto again = world.there().makeListener(type);
    again->start();
    CHECK(world.runUntil([&] { return own.count() == 1U; }));
}

TEST_CASE("another's service that takes a withdrawn name at once is seen all the same") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    auto listener = world.here().makeListener(type);
    listener->start();
    const Reports witness(world.there(), type);
    REQUIRE(world.runUntil([&] { return witness.count() == 1U; }));
    listener.reset();
    const auto other = world.there().makeListener(type);
    other->start();
    const Reports own(world.here(), type);
    CHECK(world.runUntil([&] { return own.count() == 1U; }));
}

TEST_CASE("what was asked of the responder holds through its end and that of the bus") {
    for (const bool withBus : {false, true}) {
        CAPTURE(withBus);
        Connected stream;
        REQUIRE(stream.isOpen());
        servers("stop avahi");
        if (withBus) {
            servers("stop bus");
        }
        const auto late = stream.world->there().makeListener(stream.type);
        late->start();
        const Reports lateReports(stream.world->here(), stream.type);
        const auto reportCount = stream.reports.all.size();
        End undialled;
        undialled.open(stream.world->here().connect(stream.reports.all.back().front()));
        CHECK(stream.runUntil([&] { return undialled.is(State::failed); }));
        if (withBus) {
            servers("start bus");
        }
        servers("start avahi");
        CHECK(stream.runUntil([&] {
            return stream.reports.count() == 2U && stream.reports.all.size() > reportCount &&
                   lateReports.count() == 2U;
        }));
        CHECK(stream.near.is(State::ready));  // an open connection needs no responder
    }
}

TEST_CASE("a program that starts before the responder finds it when it comes") {
    servers("stop avahi");
    LocalWorld world;
    const std::string type = test::freshServiceType();
    const auto listener = world.there().makeListener(type);
    listener->start();
    const Reports reports(world.here(), type);
    servers("start avahi");
    CHECK(world.runUntil([&] { return reports.count() == 1U; }));
}

TEST_CASE("every way on which a service was seen leads to it, those with a scope included") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    const auto listener = world.there().makeListener(type);
    listener->start();
    const Reports reports(world.here(), type);
    REQUIRE(world.runUntil([&] { return reports.count() == 1U; }));

    const auto cable = static_cast<AvahiIfIndex>(if_nametoindex("cable0"));
    const auto loopback = static_cast<AvahiIfIndex>(if_nametoindex("lo"));
    std::vector<ServiceSighting> sightings{{loopback, AVAHI_PROTO_INET}};
    if (cable != 0) {
        sightings.push_back({cable, AVAHI_PROTO_INET});
        sightings.push_back({cable, AVAHI_PROTO_INET6});
    }
    QtMainQueue queue;
    SocketEvents events;
    AvahiThread avahi;
    for (const ServiceSighting& sighting : sightings) {
        CAPTURE(sighting.interface);
        CAPTURE(sighting.protocol);
        ServiceDialer dialer(avahi, events, queue, reports.all.back().front(), {sighting});
        FileDescriptor socket;
        dialer.start([&](FileDescriptor opened) { socket = std::move(opened); });
        REQUIRE(world.runUntil([&] { return socket.isOpen(); }));
        sockaddr_in6 peer{};
        socklen_t size = sizeof(peer);
        REQUIRE(getpeername(socket.value(), reinterpret_cast<sockaddr*>(&peer), &size) == 0);
        const bool isIPv6 = sighting.protocol == AVAHI_PROTO_INET6;
        CHECK(peer.sin6_family == (isIPv6 ? AF_INET6 : AF_INET));
        CHECK((!isIPv6 || peer.sin6_scope_id == static_cast<std::uint32_t>(cable)));
    }
}

TEST_CASE("whoever takes the first service comes past one that can't be reached") {
    LocalWorld world;
    const std::string type = test::freshServiceType();
    const ForeignService dead("a dead one", type, 9);
    const auto listener = world.there().makeListener(type);
    listener->start();
    const Reports reports(world.here(), type);
    REQUIRE(world.runUntil([&] { return reports.count() == 2U; }));
    const auto callFirst = [&] {
        End end;
        end.open(world.here().connect(reports.all.back().front()));
        CHECK(world.runUntil([&] { return !end.states.empty(); }));
        return end.states.front() == State::ready;
    };
    if (!callFirst()) {
        const auto reportCount = reports.all.size();
        REQUIRE(world.runUntil([&] { return reports.all.size() > reportCount; }));
        CHECK(callFirst());
    }
}

TEST_CASE("nothing stays open behind a connection, a listener and a browser") {
    LocalWorld world;
    std::vector<std::ptrdiff_t> counts;
    for (int round = 0; round < 3; ++round) {
        {
            const std::string type = test::freshServiceType();
            const auto listener = world.there().makeListener(type);
            std::vector<End> ends(3);
            std::size_t accepted = 0;
            listener->onNewConnection = [&](auto connection) {
                ends[accepted++].open(std::move(connection));
            };
            listener->start();
            const Reports reports(world.here(), type);
            REQUIRE(world.runUntil([&] { return reports.count() == 1U; }));
            ends.back().open(world.here().connect(reports.all.back().front()));
            REQUIRE(world.runUntil([&] { return ends.back().is(State::ready) && accepted == 1; }));
        }
        counts.push_back(openFiles());
    }
    CHECK(counts[1] == counts[2]);
}
