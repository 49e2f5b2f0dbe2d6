#pragma once

#include <QSocketNotifier>

#include "platform/posix/FileDescriptor.h"

#include <sys/epoll.h>

#include <cstdint>

namespace tessivo {

/// Watches sockets for the main thread's event loop through one kernel object. Unlike Qt's
/// notifiers, it can tell that a peer has closed behind input that nobody wants yet, and a hundred
/// sockets cost a turn of the loop no more than one. Main thread only.
class SocketEvents {
public:
    /// Whoever has a socket watched. May stop watching its own socket in the call, no other.
    class Handler {
    public:
        /// `events` are those of epoll(7).
        virtual void handleSocket(std::uint32_t events) = 0;

    protected:
        ~Handler() = default;
    };

    /// Throws std::system_error when the system has no more to give.
    SocketEvents();
    SocketEvents(const SocketEvents&) = delete;
    SocketEvents& operator=(const SocketEvents&) = delete;

    /// Tells `handler` while `events` hold, until `remove`. Errors are told whatever is asked for.
    /// False when the system refuses (too many are watched, no memory), which is told on standard
    /// error: the socket isn't watched as asked, and its owner is to close it.
    [[nodiscard]] bool add(const FileDescriptor& socket, std::uint32_t events, Handler& handler);
    [[nodiscard]] bool change(const FileDescriptor& socket, std::uint32_t events, Handler& handler);
    void remove(const FileDescriptor& socket);

private:
    bool control(int operation, const FileDescriptor& socket, epoll_event* event);
    void dispatch();

    FileDescriptor epoll_;
    QSocketNotifier notifier_;
};

}  // namespace tessivo
