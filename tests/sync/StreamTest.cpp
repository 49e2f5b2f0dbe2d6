#include "sync/Stream.h"

#include <doctest/doctest.h>

#include <memory>
#include <optional>
#include <string>

using namespace tessivo;
using State = StreamConnection::State;

TEST_CASE("what nobody asked for stays with the writer, but for a bounded part") {
    test::Stream stream;
    const std::size_t bound = StreamConnection::maximumUnreadBytes;
    const auto message = std::make_shared<const std::string>(4 * bound, 'x');
    stream.out->send(message);
    stream.queue.advance(1.0);
    std::size_t arrived = 0;
    stream.writer.setStalled(true);  // from here on, only what has set out arrives
    stream.in->receive(1, 8 * bound, [&](const std::optional<std::string>& bytes) {
        arrived = bytes.value_or("").size();
    });
    stream.queue.advance(1.0);
    CHECK(arrived == bound);
}

TEST_CASE("bytes stay in order, and before the end of the stream, when the cable gets faster") {
    test::Stream stream;
    stream.reader.setLatency(2.0);
    stream.out->send(std::make_shared<const std::string>(3000, 'a'));
    stream.reader.setLatency(0.0);
    stream.out->send(std::make_shared<const std::string>("b"));
    stream.out.reset();
    std::optional<std::string> received;
    stream.in->receive(3001, 4000,
                       [&](std::optional<std::string> bytes) { received = std::move(bytes); });
    stream.queue.advance(5.0);
    CHECK(received == std::string(3000, 'a') + "b");
    CHECK(stream.states.back() == State::failed);
}
