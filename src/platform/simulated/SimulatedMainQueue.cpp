#include "platform/simulated/SimulatedMainQueue.h"

#include "platform/Turns.h"

namespace tessivo {

class SimulatedMainQueue::Repeating final : public Repetition {
public:
    Repeating(SimulatedMainQueue& queue, double interval, Task task)
        : turns_(queue), interval_(interval), task_(std::move(task)) {
        schedule();
    }

private:
    void schedule() {
        turns_.postAfter(interval_, [this] {
            schedule();
            callHandler(task_);
        });
    }

    Turns turns_;
    double interval_;
    Task task_;
};

void SimulatedMainQueue::postAfter(double seconds, Task task) {
    tasks_.emplace(Due{elapsed_ + seconds, posted_++}, std::move(task));
}

std::unique_ptr<MainQueue::Repetition> SimulatedMainQueue::repeatEvery(double seconds, Task task) {
    return std::make_unique<Repeating>(*this, seconds, std::move(task));
}

void SimulatedMainQueue::advance(double seconds) {
    const double end = elapsed_ + seconds;
    while (!tasks_.empty() && tasks_.begin()->first.first <= end) {
        auto node = tasks_.extract(tasks_.begin());
        const double due = node.key().first;
        now_ = now_ + (due - elapsed_);
        elapsed_ = due;
        node.mapped()();
    }
    now_ = now_ + (end - elapsed_);
    elapsed_ = end;
}

}  // namespace tessivo
