#pragma once

#include "platform/MainQueue.h"

#include <functional>
#include <memory>
#include <utility>

namespace tessivo {

/// Main-thread turns of one object: those that are still waiting when it goes never run.
class Turns {
public:
    explicit Turns(MainQueue& queue) : queue_(queue) {}

    void post(MainQueue::Task task) { poster()(std::move(task)); }
    void postAfter(double seconds, MainQueue::Task task) {
        queue_.postAfter(seconds, guarded(alive_, std::move(task)));
    }

    /// Does what `post` does, on any thread and also after the object has gone.
    std::function<void(MainQueue::Task)> poster() {
        return [&queue = queue_, alive = std::weak_ptr(alive_)](MainQueue::Task task) {
            queue.post(guarded(alive, std::move(task)));
        };
    }

private:
    static MainQueue::Task guarded(std::weak_ptr<bool> alive, MainQueue::Task task) {
        return [alive = std::move(alive), task = std::move(task)] {
            if (!alive.expired()) {
                task();
            }
        };
    }

    MainQueue& queue_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>();
};

}  // namespace tessivo
