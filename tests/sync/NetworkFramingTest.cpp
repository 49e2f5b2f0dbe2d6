#include "platform/OutgoingMessages.h"
#include "sync/NetworkFraming.h"
#include "sync/Stream.h"

#include <doctest/doctest.h>

#include <optional>
#include <string>
#include <vector>

using namespace tessivo;
using State = StreamConnection::State;

namespace {

/// Four bytes of length.
std::string header(std::uint32_t size) {
    return {static_cast<char>(size >> 24U), static_cast<char>(size >> 16U & 0xFFU),
            static_cast<char>(size >> 8U & 0xFFU), static_cast<char>(size & 0xFFU)};
}

/// What `receiveOne` made of the stream: every completion, in order.
using Completions = std::vector<std::optional<std::string>>;

void receiveInto(Completions& completions, StreamConnection& connection) {
    NetworkFraming::receiveOne(connection, [&](std::optional<std::string> payload) {
        completions.push_back(std::move(payload));
    });
}

}  // namespace

TEST_CASE("a frame is the length, most significant byte first, and the payload") {
    const std::string payload(300, 'x');
    CHECK(*NetworkFraming::frame(payload) == std::string("\0\0\1\x2C", 4) + payload);
    CHECK(NetworkFraming::frame(std::string(0x010203, ' '))->substr(0, 4) ==
          std::string("\0\1\2\3", 4));
}

TEST_CASE("frames are read one by one, however the network cuts them up") {
    const std::string payloads[] = {"first", std::string("\0\xFF{", 3), "third"};
    for (const std::size_t segmentSize : {1U, 3U, 5U, 1448U}) {
        CAPTURE(segmentSize);
        test::Stream stream(segmentSize);
        for (const std::string& payload : payloads) {
            NetworkFraming::send(payload, *stream.out);
        }
        for (const std::string& payload : payloads) {
            Completions completions;
            receiveInto(completions, *stream.in);
            stream.queue.advance(1.0);
            CHECK(completions == Completions{payload});
        }
    }
}

TEST_CASE("what is no frame gives nothing, and what ends early gives what came") {
    struct Case {
        const char* name;
        std::string bytes;
        bool closes;
        Completions expected;
    };
    const Case cases[] = {
        {"no byte yet", "", false, {}},
        {"no byte at all", "", true, {std::nullopt}},
        {"three bytes of a header", std::string("\0\0\1", 3), true, {std::nullopt}},
        {"an empty payload", header(0) + "x", false, {std::nullopt}},
        {"the first length that is too long", header(20'000'000) + "x", false, {std::nullopt}},
        {"the longest length that can be told", header(0xFFFF'FFFF), false, {std::nullopt}},
        {"the longest payload is waited for", header(19'999'999) + "x", false, {}},
        {"a header without a payload", header(5), true, {std::nullopt}},
        {"half a payload", header(5) + "abc", true, {"abc"}},
        {"more than a payload", header(3) + "abcdef", true, {"abc"}},
    };
    for (const Case& row : cases) {
        CAPTURE(row.name);
        test::Stream stream;
        Completions completions;
        receiveInto(completions, *stream.in);
        stream.write(row.bytes);
        if (row.closes) {
            stream.close();
        }
        CHECK(completions == row.expected);
        CHECK(stream.states.back() == (row.closes ? State::failed : State::ready));
    }
}

TEST_CASE("outgoing messages keep their order, and make room for the newest past the limit") {
    const auto message = [](std::size_t size, char content) {
        return std::make_shared<const std::string>(size, content);
    };
    constexpr std::size_t half = OutgoingMessages::limit / 2;
    OutgoingMessages outgoing;
    outgoing.push(message(half, 'a'));
    outgoing.push(message(half, 'b'));
    CHECK(outgoing.size() == OutgoingMessages::limit);
    CHECK(outgoing.next().substr(0, 1) == "a");

    SUBCASE("none has begun") {
        outgoing.push(message(1, 'c'));
        CHECK(outgoing.size() == 1);
        CHECK(outgoing.next() == "c");
    }
    SUBCASE("the first has begun, and must be finished") {
        outgoing.advance(half - 1);
        outgoing.push(message(half, 'c'));
        CHECK(outgoing.size() == 1 + half);
        CHECK(outgoing.next() == "a");
        outgoing.advance(1);
        CHECK(outgoing.next().substr(0, 1) == "c");
    }
    SUBCASE("one message longer than the limit") {
        outgoing.advance(1);
        outgoing.push(message(OutgoingMessages::limit + 1, 'c'));
        CHECK(outgoing.size() == half - 1 + OutgoingMessages::limit + 1);
        outgoing.advance(half - 1);
        CHECK(outgoing.next().substr(0, 1) == "c");
        outgoing.push(message(1, 'd'));
        CHECK(outgoing.next() == "d");
    }
}
