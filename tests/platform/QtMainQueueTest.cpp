#include <QThread>

#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SystemClock.h"
#include "support/EventLoop.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using tessivo::MainQueue;
using tessivo::QtMainQueue;
using tessivo::test::runUntil;

namespace {

// Runs the event loop until everything that is waiting without a delay has run.
void drain(QtMainQueue& queue) {
    bool drained = false;
    queue.post([&] { queue.post([&] { drained = true; }); });
    REQUIRE(runUntil([&] { return drained; }));
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

TEST_CASE("what another thread posts runs on the main thread, each once and in order") {
    QtMainQueue queue;
    constexpr int count = 2000;
    const auto mainThread = std::this_thread::get_id();
    std::vector<int> order;
    int wrong = 0;
    std::thread other([&] {
        for (int i = 0; i < count; ++i) {
            queue.post([&, i] {
                order.push_back(i);
                wrong += std::this_thread::get_id() != mainThread ? 1 : 0;
            });
        }
    });
    CHECK(order.empty());
    CHECK(runUntil([&] { return order.size() == count; }));
    other.join();
    drain(queue);
    CHECK(order.size() == count);
    CHECK(std::is_sorted(order.begin(), order.end()));
    CHECK(wrong == 0);
}

TEST_CASE("a delayed task runs once, no sooner than its delay") {
    QtMainQueue queue;
    for (const double delay : {0.0, 0.0004, 0.05}) {
        CAPTURE(delay);
        const auto start = std::chrono::steady_clock::now();
        std::vector<double> runs;
        queue.postAfter(delay, [&] { runs.push_back(secondsSince(start)); });
        CHECK(runs.empty());
        CHECK(runUntil([&] { return !runs.empty(); }));
        drain(queue);
        CHECK(runs.size() == 1);
        CHECK(runs.front() >= delay);
    }
}

TEST_CASE("a repetition keeps to its first instant, however late single runs are") {
    QtMainQueue queue;
    const double interval = 0.1;
    const auto start = std::chrono::steady_clock::now();
    std::vector<double> phases;
    const auto repetition = queue.repeatEvery(interval, [&] {
        const double elapsed = secondsSince(start);
        CHECK(elapsed >= interval * double(phases.size() + 1));
        phases.push_back(elapsed - interval * std::floor(elapsed / interval));
        if (phases.size() < 8) {
            QThread::msleep(35);  // what a drifting timer would add to each later run
        }
    });
    QThread::msleep(1050);  // what was missed is made up for by one run, half an interval late
    drain(queue);
    CHECK(phases.size() < 10);
    REQUIRE(runUntil([&] { return phases.size() >= 30; }));
    // Had a late run shifted the next, or a long one, none would be near the grid any more. A busy
    // machine may delay some, not all.
    std::sort(phases.begin(), phases.end());
    CHECK(phases[phases.size() / 4] < 0.3 * interval);
}

TEST_CASE("a repetition may be ended by its own task") {
    QtMainQueue queue;
    int runs = 0;
    std::unique_ptr<MainQueue::Repetition> repetition;
    repetition = queue.repeatEvery(0.001, [&, kept = std::make_shared<int>(1)] {
        repetition.reset();
        runs += *kept;
    });
    CHECK(runUntil([&] { return repetition == nullptr; }));
    drain(queue);
    CHECK(runs == 1);
}

TEST_CASE("nothing runs once its owner is gone") {
    auto queue = std::make_unique<QtMainQueue>();
    int runs = 0;
    const auto count = [&] { ++runs; };
    auto repetition = queue->repeatEvery(0.001, count);
    repetition.reset();
    drain(*queue);
    QThread::msleep(5);
    drain(*queue);
    CHECK(runs == 0);

    queue->post(count);
    queue->postAfter(0.0, count);
    repetition = queue->repeatEvery(0.001, count);
    queue.reset();
    QtMainQueue other;
    QThread::msleep(5);
    drain(other);
    CHECK(runs == 0);
}

TEST_CASE("the system clock counts from 2001 in UTC") {
    const double before = std::difftime(std::time(nullptr), 978'307'200);
    const double now = tessivo::SystemClock().now().secondsSince2001;
    // time() reads a coarser clock, which is still in the second before when a new one begins.
    const double after = std::difftime(std::time(nullptr), 978'307'200) + 2.0;
    CHECK(now >= before);
    CHECK(now <= after);
}
