#include "platform/qt/QtMainQueue.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace tessivo {
namespace {

using Seconds = std::chrono::duration<double>;
using SteadyClock = std::chrono::steady_clock;

int wholeMilliseconds(Seconds delay) {
    const double milliseconds = std::ceil(delay.count() * 1000.0);
    return static_cast<int>(std::clamp(milliseconds, 0.0, double{std::numeric_limits<int>::max()}));
}

// Kept alive by its owner and, while it runs, by the run: a task may destroy its own repetition.
struct RepeatedTask : std::enable_shared_from_this<RepeatedTask> {
    RepeatedTask(QObject* contextObject, Seconds length, MainQueue::Task function)
        : context(contextObject), interval(length), task(std::move(function)) {}

    void schedule() {
        const Seconds elapsed = SteadyClock::now() - start;
        const double next = std::max(runs + 1.0, std::floor(elapsed / interval) + 1.0);
        runs = next;
        QTimer::singleShot(wholeMilliseconds(next * interval - elapsed), Qt::PreciseTimer, context,
                           [weak = weak_from_this()] {
                               if (const auto live = weak.lock()) {
                                   live->schedule();
                                   live->task();
                               }
                           });
    }

    QObject* context;
    Seconds interval;
    MainQueue::Task task;
    SteadyClock::time_point start = SteadyClock::now();
    double runs = 0.0;  // whole intervals from the start to the run that is waiting
};

class QtRepetition final : public MainQueue::Repetition {
public:
    explicit QtRepetition(std::shared_ptr<RepeatedTask> task) : task_(std::move(task)) {
        task_->schedule();
    }

private:
    std::shared_ptr<RepeatedTask> task_;
};

}  // namespace

QtMainQueue::QtMainQueue() : wake_(context_, [this] { runFirst(); }) {}

// Handed over here and not through Qt's event queue, whose lock is made of bare futexes: a thread
// checker can't see that, and would take every posted task for a race.
void QtMainQueue::post(Task task) {
    {
        const std::lock_guard lock(mutex_);
        posted_.push_back(std::move(task));
    }
    wake_.fire();
}

void QtMainQueue::runFirst() {
    std::unique_lock lock(mutex_);
    const Task task = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    task();
}

void QtMainQueue::postAfter(double seconds, Task task) {
    QTimer::singleShot(wholeMilliseconds(Seconds(seconds)), Qt::PreciseTimer, &context_,
                       std::move(task));
}

std::unique_ptr<MainQueue::Repetition> QtMainQueue::repeatEvery(double seconds, Task task) {
    return std::make_unique<QtRepetition>(
        std::make_shared<RepeatedTask>(&context_, Seconds(seconds), std::move(task)));
}

std::unique_ptr<MainQueue::RealtimeTrigger> QtMainQueue::makeRealtimeTrigger(Task task) {
    return std::make_unique<QtRealtimeTrigger>(context_, std::move(task));
}

}  // namespace tessivo
