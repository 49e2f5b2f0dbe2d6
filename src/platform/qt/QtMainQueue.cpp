#include "platform/qt/QtMainQueue.h"

#include <QTimer>

#include "base/Lifetime.h"

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

class QtRepetition final : public MainQueue::Repetition {
public:
    QtRepetition(QObject& context, Seconds interval, MainQueue::Task task)
        : context_(context), interval_(interval), task_(std::move(task)) {
        schedule();
    }

private:
    void schedule() {
        const Seconds elapsed = SteadyClock::now() - start_;
        runs_ = std::max(runs_ + 1.0, std::floor(elapsed / interval_) + 1.0);
        QTimer::singleShot(wholeMilliseconds(runs_ * interval_ - elapsed), Qt::PreciseTimer,
                           &context_, life_.guard([this] {
                               schedule();
                               callHandler(task_);
                           }));
    }

    QObject& context_;
    Seconds interval_;
    MainQueue::Task task_;
    SteadyClock::time_point start_ = SteadyClock::now();
    double runs_ = 0.0;  // whole intervals from the start to the run that is waiting
    Lifetime life_;
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
    return std::make_unique<QtRepetition>(context_, Seconds(seconds), std::move(task));
}

}  // namespace tessivo
