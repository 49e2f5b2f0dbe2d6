#include <QThread>

#include "ltc/LtcEncoder.h"
#include "platform/qt/QtMainQueue.h"
#include "platform/qt/SystemClock.h"
#include "platform/simulated/SimulatedAudioInput.h"
#include "support/EventLoop.h"
#include "timecode/LtcManager.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <ctime>
#include <iostream>
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

TEST_CASE("what another thread posts or fires runs on the main thread, each once and in order") {
    QtMainQueue queue;
    constexpr int count = 2000;
    const auto mainThread = std::this_thread::get_id();
    std::vector<int> order;
    std::atomic<int> fired = 0;
    int runs = 0, wrong = 0;
    const auto trigger = queue.makeRealtimeTrigger([&] {
        ++runs;
        wrong += runs > fired || std::this_thread::get_id() != mainThread ? 1 : 0;
    });
    std::thread other([&] {
        for (int i = 0; i < count; ++i) {
            queue.post([&, i] {
                order.push_back(i);
                wrong += std::this_thread::get_id() != mainThread ? 1 : 0;
            });
            ++fired;
            trigger->fire();
        }
    });
    CHECK(order.empty());
    CHECK(runUntil([&] { return order.size() == count && runs == count; }));
    other.join();
    drain(queue);
    CHECK(runs == count);
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

TEST_CASE("a repetition or trigger may be ended by its own task") {
    QtMainQueue queue;
    int runs = 0;
    std::unique_ptr<MainQueue::Repetition> repetition;
    std::unique_ptr<MainQueue::RealtimeTrigger> trigger;
    repetition = queue.repeatEvery(0.001, [&, kept = std::make_shared<int>(1)] {
        repetition.reset();
        runs += *kept;
    });
    CHECK(runUntil([&] { return repetition == nullptr; }));
    trigger = queue.makeRealtimeTrigger([&] {
        trigger.reset();
        ++runs;
    });
    trigger->fire();
    trigger->fire();
    CHECK(runUntil([&] { return trigger == nullptr; }));
    drain(queue);
    CHECK(runs == 2);
}

TEST_CASE("a burst of firings doesn't hold up posted work") {
    QtMainQueue queue;
    int runs = 0;
    int runsBefore = -1;
    const auto trigger = queue.makeRealtimeTrigger([&] {
        if (++runs == 1) {
            queue.post([&] { runsBefore = runs; });
        }
    });
    for (int i = 0; i < 1000; ++i) {
        trigger->fire();
    }
    CHECK(runUntil([&] { return runs == 1000; }));
    CHECK(runsBefore >= 1);
    CHECK(runsBefore < 100);
}

TEST_CASE("nothing runs once its owner is gone") {
    auto queue = std::make_unique<QtMainQueue>();
    int runs = 0;
    const auto count = [&] { ++runs; };
    auto trigger = queue->makeRealtimeTrigger(count);
    trigger->fire();
    trigger.reset();
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
    const double after = std::difftime(std::time(nullptr), 978'307'200) + 1.0;
    CHECK(now >= before);
    CHECK(now <= after);
}

TEST_CASE("a capture changes its device two hundred times while an audio thread delivers blocks") {
    tessivo::ltc::LtcEncoder encoder({}, 16'000);  // short frames: a block holds four
    std::vector<std::vector<float>> block(2);
    for (int i = 0; i < 4; ++i) {
        encoder.appendFrame({.hours = 10}, block[0]);
    }
    block[1].assign(block[0].size(), 0.125F);
    QtMainQueue queue;
    const tessivo::SystemClock clock;
    tessivo::SimulatedAudioInput audio(queue);
    audio.setDevices({{.id = 0, .name = "A", .format = {48'000.0, 2}},
                      {.id = 1, .name = "B", .format = {96'000.0, 2}}});
    tessivo::LtcManager manager(clock, queue, audio, std::cout);
    const std::jthread audioThread([&](const std::stop_token& stop) {
        while (!stop.stop_requested()) {
            audio.deliver(block);
            std::this_thread::yield();
        }
    });
    for (tessivo::AudioDeviceId change = 0; change < 200; ++change) {
        manager.stopCapturing();
        manager.setSelectedDeviceId(change % 2);
        manager.startCapturing();
        const std::int64_t before = manager.buffersReceivedCount();
        REQUIRE(runUntil([&] { return manager.buffersReceivedCount() >= before + 5; }));
        CHECK(manager.currentTimecodeDisplay() == "10:00:00:00");
        CHECK(manager.levelsPerChannel() == std::vector{1.0F, 0.125F});
    }
    manager.stopCapturing();
    const std::int64_t handled = manager.buffersReceivedCount();
    drain(queue);
    CHECK(manager.buffersReceivedCount() == handled);
}
