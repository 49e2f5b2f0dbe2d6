#include "platform/posix/ThreadBackground.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace tessivo {

struct ThreadBackground::Running {
    std::mutex mutex;
    std::condition_variable ended;
    int count = 0;
};

ThreadBackground::ThreadBackground() : running_(std::make_shared<Running>()) {}

ThreadBackground::~ThreadBackground() {
    std::unique_lock lock(running_->mutex);
    running_->ended.wait_for(lock, std::chrono::milliseconds(500),
                             [this] { return running_->count == 0; });
}

void ThreadBackground::run(std::function<void()> work) {
    {
        const std::lock_guard lock(running_->mutex);
        ++running_->count;
    }
    std::thread([work = std::move(work), running = running_]() mutable {
        work();
        work = nullptr;  // what it holds goes before the end is told
        const std::lock_guard lock(running->mutex);
        --running->count;
        running->ended.notify_all();
    }).detach();
}

}  // namespace tessivo
