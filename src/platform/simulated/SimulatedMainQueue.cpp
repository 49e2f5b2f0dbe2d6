#include "platform/simulated/SimulatedMainQueue.h"

namespace tessivo {

class SimulatedMainQueue::Repeating final : public Repetition {
public:
    Repeating(SimulatedMainQueue& queue, double interval, Task task)
        : core_(std::make_shared<Core>(Core{queue, interval, std::move(task)})) {
        schedule(core_);
    }

private:
    struct Core {
        SimulatedMainQueue& queue;
        double interval;
        Task task;
    };

    static void schedule(const std::shared_ptr<Core>& core) {
        core->queue.postAfter(core->interval, [weak = std::weak_ptr<Core>(core)] {
            if (const auto live = weak.lock()) {
                schedule(live);
                live->task();
            }
        });
    }

    std::shared_ptr<Core> core_;
};

class SimulatedMainQueue::Trigger final : public RealtimeTrigger {
public:
    Trigger(SimulatedMainQueue& queue, Task task)
        : queue_(queue), task_(std::make_shared<Task>(std::move(task))) {}

    void fire() noexcept override {
        queue_.post([weak = std::weak_ptr<Task>(task_)] {
            if (const auto task = weak.lock()) {
                (*task)();
            }
        });
    }

private:
    SimulatedMainQueue& queue_;
    std::shared_ptr<Task> task_;
};

void SimulatedMainQueue::postAfter(double seconds, Task task) {
    tasks_.emplace(Due{elapsed_ + seconds, posted_++}, std::move(task));
}

std::unique_ptr<MainQueue::Repetition> SimulatedMainQueue::repeatEvery(double seconds, Task task) {
    return std::make_unique<Repeating>(*this, seconds, std::move(task));
}

std::unique_ptr<MainQueue::RealtimeTrigger> SimulatedMainQueue::makeRealtimeTrigger(Task task) {
    return std::make_unique<Trigger>(*this, std::move(task));
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
