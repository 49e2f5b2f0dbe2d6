#include "platform/qt/QtMainQueue.h"

#include <QMetaObject>
#include <QTimer>

#include "platform/qt/QtRealtimeTrigger.h"

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

void QtMainQueue::post(Task task) {
    QMetaObject::invokeMethod(&context_, std::move(task), Qt::QueuedConnection);
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
