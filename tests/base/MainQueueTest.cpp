#include "platform/simulated/SimulatedMainQueue.h"

#include <doctest/doctest.h>

#include <string>

using tessivo::SimulatedMainQueue;

TEST_CASE("virtual time runs tasks in the order of their time, then of posting") {
    SimulatedMainQueue queue;
    const auto start = queue.now();
    std::string order;
    queue.postAfter(2.0, [&] { order += "c"; });
    queue.post([&] {
        order += "a";
        queue.post([&] { order += "b"; });
    });
    queue.advance(1.5);
    CHECK(order == "ab");
    queue.advance(0.5);
    CHECK(order == "abc");
    CHECK(queue.now() - start == doctest::Approx(2.0));
    CHECK(queue.isIdle());
}
