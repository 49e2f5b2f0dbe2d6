#pragma once

#include "base/Lifetime.h"
#include "platform/MainQueue.h"

#include <functional>
#include <utility>

namespace tessivo {

/// Later main-thread turns of one object: those that are still waiting when it goes, or when they
/// are called off, never run. Whoever has several to call off apart holds several of these.
class Turns {
public:
    explicit Turns(MainQueue& queue) : queue_(queue) {}

    void post(MainQueue::Task task) { queue_.post(life_.guard(std::move(task))); }
    void postAfter(double seconds, MainQueue::Task task) {
        queue_.postAfter(seconds, life_.guard(std::move(task)));
    }
    /// Does what `post` does, on any thread and also after the object has gone.
    std::function<void(MainQueue::Task)> poster() {
        return [&queue = queue_, guard = life_.guard([](const MainQueue::Task& task) { task(); })](
                   MainQueue::Task task) {
            queue.post([guard, task = std::move(task)]() mutable { guard(task); });
        };
    }
    void callOff() { life_.callOff(); }

private:
    MainQueue& queue_;
    Lifetime life_;
};

}  // namespace tessivo
