// What every network promises: these cases run on the simulated one and on the real one.

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
    const ServiceEndpoint gone = reports.all[1].front();
    first.reset();
    CHECK(world->runUntil([&] { return reports.count() == 1U; }));
    CHECK(std::ranges::adjacent_find(reports.all) == reports.all.end());
    End late;
    late.open(world->here().connect(gone));
    CHECK(world->runUntil([&] { return !late.states.empty(); }));
    CHECK(late.states == States{State::failed});
    CHECK(std::ranges::none_of(reports.all, [](const auto& set) { return set.size() > 2; }));
}

TEST_CASE("what is sent arrives whole and in order, in the pieces that are asked for") {
    Connected stream;
    REQUIRE(stream.isOpen());
    const std::string large(5U << 20U, 'l');
    for (const std::string& message : {std::string("first"), large, std::string("last")}) {
        stream.far.send(message);
    }
    struct Case {
        std::size_t minimum, maximum;
        std::string expected;
    };
    for (const Case& piece :
         {Case{1, 3, "fir"}, Case{2 + large.size(), 2 + large.size(), "st" + large},
          Case{4, 100, "last"}}) {
        stream.near.received.clear();
        stream.near.receive(piece.minimum, piece.maximum);
        CHECK(stream.near.received.empty());  // never from within the call
        REQUIRE(stream.runUntil([&] { return !stream.near.received.empty(); }));
        CHECK(stream.near.received.front() == piece.expected);
    }
}

TEST_CASE(
    "what a peer sent before it closed is read first, also what was sent before the opening") {
    for (const std::size_t minimum : {1U, 4U, 100U}) {
        CAPTURE(minimum);
        Connected stream;
        std::string readAtEnd;
        std::string read;
        stream.near.connection->onStateChange = [&](State state) {
            stream.near.states.push_back(state);
            readAtEnd = read;
        };
        StreamConnection::Completion readOn = [&](const std::optional<std::string>& bytes) {
            if (bytes) {
                read += *bytes;
                stream.near.connection->receive(minimum, minimum + 1, readOn);
            }
        };
        stream.near.connection->receive(minimum, minimum + 1, readOn);
        REQUIRE(stream.runUntil([&] { return stream.far.connection != nullptr; }));
        stream.far.send("0123456789");
        stream.far.send("abcdef");
        REQUIRE(stream.isOpen());
        stream.far.connection.reset();
        REQUIRE(stream.runUntil([&] { return stream.near.is(State::failed); }));
        CHECK(readAtEnd == "0123456789abcdef");
        stream.near.receive(1, 1);  // nothing comes any more, and that is told too
        REQUIRE(stream.runUntil([&] { return !stream.near.received.empty(); }));
        CHECK_FALSE(stream.near.received.front());
    }
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

TEST_CASE(
    "a peer that stops reading costs a bounded part on both sides, and then gets the newest") {
    Connected stream;
    REQUIRE(stream.isOpen());
    constexpr std::size_t messageSize = 1U << 20U;
    const auto read = [&] {
        stream.near.received.clear();
        stream.near.receive(messageSize, messageSize);
        REQUIRE(stream.runUntil([&] { return !stream.near.received.empty(); }));
        return stream.near.received.front().value_or("-").front();
    };
    const auto send = [&](char first, char last) {
        for (char c = first; c <= last; ++c) {
            stream.far.send(std::string(messageSize, c));
        }
    };
    send(1, 30);  // a system learns from a reader that keeps up how much it may take in
    for (char c = 1; c <= 30; ++c) {
        CHECK(read() == c);
    }
    send(31, 120);
    std::string arrived;
    do {
        arrived += read();
    } while (arrived.back() != 120);
    CHECK(std::ranges::is_sorted(arrived));
    // What waits to be sent, and what the sender's system has taken for the way (4 MB).
    CHECK(arrived.size() <= StreamConnection::maximumUnsentBytes / messageSize + 6);
}
