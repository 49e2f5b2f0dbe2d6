#include "platform/network/AvahiThread.h"

#include <avahi-common/error.h>
#include <avahi-common/timeval.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace tessivo {
namespace {

/// From the loss of the daemon or the message bus to a new attempt, and between attempts.
constexpr unsigned reopenMilliseconds = 500;

}  // namespace

AvahiThread::AvahiThread()
    : wake_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)),
      poll_(avahi_simple_poll_new(), &avahi_simple_poll_free) {
    if (!wake_.isOpen() || !poll_) {
        throw std::system_error(errno, std::generic_category(), "the thread of Avahi");
    }
    thread_ = std::thread([this] { loop(); });
}

AvahiThread::~AvahiThread() {
    run([this] { avahi_simple_poll_quit(poll_.get()); });
    thread_.join();
}

void AvahiThread::run(std::function<void()> command) {
    {
        const std::lock_guard lock(mutex_);
        commands_.push_back(std::move(command));
    }
    eventfd_write(wake_.value(), 1);
}

void AvahiThread::add(std::shared_ptr<AvahiTask> task) {
    run([this, task = std::move(task)] {
        tasks_.push_back(task);
        tell(*task);
    });
}

void AvahiThread::remove(std::shared_ptr<AvahiTask> task) {
    run([this, task = std::move(task)] {
        task->end();
        std::erase(tasks_, task);
    });
}

void AvahiThread::restart(std::shared_ptr<AvahiTask> task) {
    run([this, task = std::move(task)] {
        if (std::ranges::find(tasks_, task) != tasks_.end()) {
            task->end();
            tell(*task);
        }
    });
}

void AvahiThread::loop() {
    const AvahiPoll* api = avahi_simple_poll_get(poll_.get());
    AvahiWatch* watch = api->watch_new(api, wake_.value(), AVAHI_WATCH_IN, &woken, this);
    reopenTimer_ = api->timeout_new(api, nullptr, &reopenCalled, this);
    reopen();
    avahi_simple_poll_loop(poll_.get());
    isRunning_ = false;
    tellAll();
    tasks_.clear();
    if (client_ != nullptr) {
        avahi_client_free(client_);
    }
    api->timeout_free(reopenTimer_);
    api->watch_free(watch);
}

void AvahiThread::woken(AvahiWatch*, int wake, AvahiWatchEvent, void* self) {
    auto& thread = *static_cast<AvahiThread*>(self);
    eventfd_t count = 0;
    eventfd_read(wake, &count);
    std::vector<std::function<void()>> commands;
    {
        const std::lock_guard lock(thread.mutex_);
        commands.swap(thread.commands_);
    }
    for (const auto& command : commands) {
        command();
    }
}

void AvahiThread::clientCalled(AvahiClient* client, AvahiClientState state, void* self) {
    static_cast<AvahiThread*>(self)->handleState(*client, state);
}

void AvahiThread::reopenCalled(AvahiTimeout*, void* self) {
    static_cast<AvahiThread*>(self)->reopen();
}

/// First called before the client's constructor has returned.
void AvahiThread::handleState(AvahiClient& client, AvahiClientState state) {
    client_ = &client;
    isRunning_ = state == AVAHI_CLIENT_S_RUNNING;
    if (state == AVAHI_CLIENT_FAILURE) {
        reopenLater();  // a client can't be freed in its own call
    } else {
        tellAll();
    }
}

void AvahiThread::tell(AvahiTask& task) {
    if (isRunning_) {
        task.begin(*client_);
    } else {
        task.end();
    }
}

void AvahiThread::tellAll() {
    for (const auto& task : tasks_) {
        tell(*task);
    }
}

void AvahiThread::reopen() {
    isRunning_ = false;
    tellAll();
    if (client_ != nullptr) {
        avahi_client_free(client_);
    }
    // With this flag a client waits for a daemon that isn't there; without the bus there is none.
    client_ = avahi_client_new(avahi_simple_poll_get(poll_.get()), AVAHI_CLIENT_NO_FAIL,
                               &clientCalled, this, nullptr);
    if (client_ == nullptr) {
        isRunning_ = false;
        reopenLater();
    }
}

void AvahiThread::reopenLater() {
    const AvahiPoll* api = avahi_simple_poll_get(poll_.get());
    timeval time{};
    api->timeout_update(reopenTimer_, avahi_elapse_time(&time, reopenMilliseconds, 0));
}

}  // namespace tessivo
