#pragma once

#include "platform/posix/FileDescriptor.h"

#include <avahi-client/client.h>
#include <avahi-common/simple-watch.h>

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tessivo {

/// Something asked of the system's responder, which lives in Avahi's thread only, from one client
/// to the next.
class AvahiTask {
public:
    virtual ~AvahiTask() = default;

    /// The responder is there: asks it.
    virtual void begin(AvahiClient& client) = 0;
    /// The responder isn't there, or the task is over: frees what `begin` made of `client`, if it
    /// ran. Told anew whenever that is found out.
    virtual void end() = 0;
};

/// The thread that talks to Avahi's daemon. It keeps a client through restarts of the daemon and of
/// the message bus, and tells the tasks. A thread of its own, because each call of libavahi-client
/// waits for an answer, up to 25 seconds when the daemon hangs: nobody else ever waits for it.
class AvahiThread {
public:
    AvahiThread();
    /// Everything asked for before is done first.
    ~AvahiThread();
    AvahiThread(const AvahiThread&) = delete;
    AvahiThread& operator=(const AvahiThread&) = delete;

    /// Runs `command` in Avahi's thread, in order. Any thread may call this.
    void run(std::function<void()> command);

    /// Begins a task, and again after each restart of the daemon, until it is removed.
    void add(std::shared_ptr<AvahiTask> task);
    void remove(std::shared_ptr<AvahiTask> task);
    /// Ends and begins a task, if it was added.
    void restart(std::shared_ptr<AvahiTask> task);

private:
    static void clientCalled(AvahiClient* client, AvahiClientState state, void* self);
    static void woken(AvahiWatch* watch, int wake, AvahiWatchEvent event, void* self);
    static void reopenCalled(AvahiTimeout* timer, void* self);

    void loop();
    void handleState(AvahiClient& client, AvahiClientState state);
    void tell(AvahiTask& task);
    void tellAll();
    void reopen();
    void reopenLater();

    std::mutex mutex_;
    std::vector<std::function<void()>> commands_;  // guarded by the mutex
    FileDescriptor wake_;                          // counts the commands

    // Of Avahi's thread.
    std::unique_ptr<AvahiSimplePoll, decltype(&avahi_simple_poll_free)> poll_;
    AvahiClient* client_ = nullptr;
    bool isRunning_ = false;  // the client's server
    AvahiTimeout* reopenTimer_ = nullptr;
    std::vector<std::shared_ptr<AvahiTask>> tasks_;

    std::thread thread_;
};

}  // namespace tessivo
