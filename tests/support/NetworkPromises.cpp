// What every network promises: these cases run on the simulated one and on the real one.

#include "platform/OutgoingMessages.h"
#include "support/NetworkWorld.h"

#include <doctest/doctest.h>

#include <algorithm>

using namespace tessivo;
using test::Connected;
using test::End;
using test::Reports;
using State = StreamConnection::State;
using States = std::vector<State>;

TEST_CASE("a browser tells first that there is nothing, then each service once, then its end") {
    const auto world = test::makeNetworkWorld();
    const std::string type = test::freshServiceType();
    Reports reports(world->here(), type);
    REQUIRE(world->runUntil([&] { return reports.count() == 0U; }));
    auto first = world->there().makeListener(type);
    first->start();
    REQUIRE(world->runUntil([&] { return reports.count() == 1U; }));
    CHECK(reports.all.back().front().type == type);
    CHECK_FALSE(reports.all.back().front().name.empty());
    const auto second = world->there().makeListener(type);
    second->start();  // the name is taken: it gets another
    REQUIRE(world->runUntil([&] { return reports.count() == 2U; }));
    first.reset();
    CHECK(world->runUntil([&] { return reports.count() == 1U; }));
    CHECK(std::ranges::none_of(reports.all, [](const auto& set) { return set.size() > 2; }));
    CHECK(std::ranges::adjacent_find(reports.all) == reports.all.end());
}

TEST_CASE("what is sent arrives whole and in order, also what was sent before the opening") {
    const auto world = test::makeNetworkWorld();
    const std::string type = test::freshServiceType();
    const auto listener = world->there().makeListener(type);
    End far;
    listener->onNewConnection = [&](auto connection) { far.open(std::move(connection)); };
    listener->start();
    Reports reports(world->here(), type);
    REQUIRE(world->runUntil([&] { return reports.count() == 1U; }));
    End near;
    near.open(world->here().connect(reports.all.back().front()));
    const std::string large(5U << 20U, 'l');
    near.send("first");
    near.send(large);
    near.send("last");
    REQUIRE(world->runUntil([&] { return far.is(State::ready); }));
    for (const std::size_t size : {std::size_t{3}, 2 + large.size(), std::size_t{4}}) {
        const std::size_t before = far.received.size();
        far.receive(size, size);
        CHECK(far.received.size() == before);  // never from within the call
        REQUIRE(world->runUntil([&] { return far.received.size() > before; }));
    }
    CHECK(far.received[0] == "fir");
    CHECK(far.received[1] == "st" + large);
    CHECK(far.received[2] == "last");
    CHECK(near.states == States{State::ready});
}

TEST_CASE("a receive completes with its minimum, and takes no more than its maximum") {
    Connected stream;
    REQUIRE(stream.isOpen());
    stream.far.send("abcdefgh");
    stream.near.receive(1, 3);
    REQUIRE(stream.runUntil([&] { return stream.near.received.size() == 1; }));
    stream.near.receive(5, 100);
    REQUIRE(stream.runUntil([&] { return stream.near.received.size() == 2; }));
    CHECK(stream.near.received[0] == "abc");
    CHECK(stream.near.received[1] == "defgh");
}

TEST_CASE("the end of the peer gives out what arrived, then fails the connection") {
    struct Case {
        const char* sent;
        std::vector<std::optional<std::string>> received;
    };
    for (const Case& end : {Case{"abc", {"abc"}}, Case{nullptr, {std::nullopt}}}) {
        Connected stream;
        REQUIRE(stream.isOpen());
        stream.near.receive(10, 10);
        if (end.sent != nullptr) {
            stream.far.send(end.sent);
        }
        std::size_t receivedAtEnd = 0;
        stream.near.connection->onStateChange = [&](State state) {
            stream.near.states.push_back(state);
            receivedAtEnd = stream.near.received.size();
        };
        stream.far.connection.reset();
        REQUIRE(stream.runUntil([&] { return stream.near.is(State::failed); }));
        CHECK(stream.near.received == end.received);
        CHECK(receivedAtEnd == 1);
        stream.near.receive(1, 1);  // nothing comes any more, and that is told too
        REQUIRE(stream.runUntil([&] { return stream.near.received.size() == 2; }));
        CHECK_FALSE(stream.near.received[1]);
    }
}

TEST_CASE("all that a peer sent before it closed is read by whoever goes on reading") {
    Connected stream;
    REQUIRE(stream.isOpen());
    std::string read;
    std::string readAtEnd;
    StreamConnection& reader = *stream.near.connection;
    StreamConnection::Completion readOn = [&](const std::optional<std::string>& bytes) {
        if (bytes) {
            read += *bytes;
            reader.receive(1, 2, readOn);
        }
    };
    reader.onStateChange = [&](State state) {
        stream.near.states.push_back(state);
        readAtEnd = read;
    };
    stream.far.send("0123456789");
    stream.far.send("abcdef");
    stream.far.connection.reset();
    reader.receive(1, 2, readOn);
    REQUIRE(stream.runUntil([&] { return stream.near.is(State::failed); }));
    CHECK(readAtEnd == "0123456789abcdef");
}

TEST_CASE("the end of the peer is noticed behind input that nobody reads") {
    Connected stream;
    REQUIRE(stream.isOpen());
    stream.far.send(std::string(1000, 'x'));
    stream.near.receive(1, 1);
    REQUIRE(stream.runUntil([&] { return !stream.near.received.empty(); }));
    stream.far.connection.reset();
    CHECK(stream.runUntil([&] { return stream.near.is(State::failed); }));
    CHECK(stream.near.states == States{State::ready, State::failed});
}

TEST_CASE("cancelling ends what it waits for, tells it, and closes the other end") {
    Connected stream;
    REQUIRE(stream.isOpen());
    stream.far.send("abcdef");
    stream.near.receive(3, 3);
    REQUIRE(stream.runUntil([&] { return stream.near.received.size() == 1; }));
    stream.near.receive(10, 10);
    stream.near.connection->cancel();
    CHECK(stream.near.received.size() == 1);  // never from within the call
    CHECK(stream.near.states == States{State::ready});
    REQUIRE(stream.runUntil([&] { return stream.near.is(State::cancelled); }));
    CHECK(stream.near.received.back() == "def");
    CHECK(stream.near.states == States{State::ready, State::cancelled});
    CHECK(stream.runUntil([&] { return stream.far.is(State::failed); }));
}

TEST_CASE("a connection may be destroyed by each of its own handlers") {
    for (const bool byCompletion : {true, false}) {
        CAPTURE(byCompletion);
        Connected stream;
        REQUIRE(stream.isOpen());
        const auto held = std::make_shared<std::string>("held by the handler");
        const auto destroy = [&, held] {
            stream.near.connection.reset();
            stream.near.received.emplace_back(*held);
        };
        if (byCompletion) {
            stream.near.connection->receive(1, 1, [destroy](const auto&) { destroy(); });
            stream.far.send("x");
        } else {
            stream.near.connection->onStateChange = [destroy](State) { destroy(); };
            stream.near.connection->cancel();
        }
        REQUIRE(stream.runUntil([&] { return stream.far.is(State::failed); }));
        CHECK(stream.near.received.size() == 1);
        CHECK(stream.near.received.front() == *held);
    }
}

TEST_CASE("browsers and listeners may be destroyed by their own handlers") {
    Connected stream;
    REQUIRE(stream.isOpen());
    const auto held = std::make_shared<std::string>("held by the handler");
    bool hasAccepted = false;
    bool hasReported = false;
    stream.listener->onNewConnection = [&, held](const auto&) {
        stream.listener.reset();
        hasAccepted = held->size() > 1;
    };
    stream.reports.browser->onResultsChanged = [&, held](const auto&) {
        stream.reports.browser.reset();
        hasReported = held->size() > 1;
    };
    End late;
    late.open(stream.world->here().connect(stream.reports.all.back().front()));
    CHECK(stream.runUntil([&] { return hasAccepted && hasReported; }));
    CHECK(held.use_count() == 1);
    CHECK(stream.runUntil([&] { return late.is(State::failed); }));  // dropped, so refused
    CHECK(stream.near.states == States{State::ready});  // those that were given away stay
}

TEST_CASE("a connection to a service that has gone fails") {
    Connected stream;
    REQUIRE(stream.isOpen());
    stream.listener.reset();
    REQUIRE(stream.runUntil([&] { return stream.reports.count() == 0U; }));
    End late;
    late.open(stream.world->here().connect(stream.reports.all[0].empty()
                                               ? stream.reports.all[1].front()
                                               : stream.reports.all[0].front()));
    CHECK(stream.runUntil([&] { return late.is(State::failed); }));
    CHECK(late.states == States{State::failed});
}

TEST_CASE("after the end of a connection, what is there is reported again") {
    Connected stream;
    REQUIRE(stream.isOpen());
    const auto reportCount = stream.reports.all.size();
    stream.far.connection.reset();
    REQUIRE(stream.runUntil([&] { return stream.reports.all.size() > reportCount; }));
    CHECK(stream.reports.count() == 1U);
    stream.near.open(stream.world->here().connect(stream.reports.all.back().front()));
    stream.near.states.clear();
    stream.far.states.clear();
    CHECK(stream.isOpen());
}

TEST_CASE("a peer that doesn't read costs a bounded part, and then gets the newest") {
    Connected stream;
    REQUIRE(stream.isOpen());
    constexpr std::size_t messageSize = 1U << 20U;
    constexpr std::size_t count = 100;
    for (std::size_t i = 1; i <= count; ++i) {
        stream.far.send(std::string(messageSize, static_cast<char>(i)));
    }
    std::string arrived;
    do {
        stream.near.received.clear();
        stream.near.receive(messageSize, messageSize);
        REQUIRE(stream.runUntil([&] { return !stream.near.received.empty(); }));
        REQUIRE(stream.near.received.front());
        const std::string& message = *stream.near.received.front();
        CHECK(message.find_first_not_of(message.front()) == std::string::npos);
        arrived += message.front();
    } while (arrived.back() != static_cast<char>(count));
    CHECK(std::ranges::is_sorted(arrived));
    CHECK(arrived.size() < count * 2 / 3);  // the bound and what the system keeps on the way
}
