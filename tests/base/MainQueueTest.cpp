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

TEST_CASE("a repetition runs once per interval until it is destroyed, also by its own task") {
    SimulatedMainQueue queue;
    int runs = 0;
    std::unique_ptr<tessivo::MainQueue::Repetition> repetition;
    repetition = queue.repeatEvery(1.0, [&] {
        if (++runs == 3) {
            repetition.reset();
        }
    });
    queue.advance(0.9);
    CHECK(runs == 0);
    queue.advance(1.2);
    CHECK(runs == 2);
    queue.advance(10.0);
    CHECK(runs == 3);
}
