#include "platform/network/TcpListener.h"

#include "platform/network/TcpConnection.h"

#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>
#include <utility>

namespace tessivo {
namespace {

/// How long the listener waits when the system gives it no caller, or doesn't watch, in seconds.
constexpr double pauseSeconds = 1.0;

/// How many callers are taken before those that nobody wants are closed again: a crowd must not
/// have all the descriptors that the program needs for its files, not even for a moment.
constexpr int callersAtOnce = 64;

FileDescriptor listenOn(const sockaddr* address, socklen_t size) {
    FileDescriptor socket(
        ::socket(address->sa_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const int both = 0;
    if (address->sa_family == AF_INET6) {
        ::setsockopt(socket.value(), IPPROTO_IPV6, IPV6_V6ONLY, &both, sizeof(both));
    }
    const bool isOpen =
        ::bind(socket.value(), address, size) == 0 && ::listen(socket.value(), SOMAXCONN) == 0;
    return isOpen ? std::move(socket) : FileDescriptor();
}

std::uint16_t portOf(const FileDescriptor& socket) {
    // The port is at the same place in the addresses of both families.
    sockaddr_in6 address{};
    socklen_t size = sizeof(address);
    ::getsockname(socket.value(), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin6_port);
}

}  // namespace

FileDescriptor TcpListener::openPort() {
    sockaddr_in6 any6{};
    any6.sin6_family = AF_INET6;
    FileDescriptor socket = listenOn(reinterpret_cast<const sockaddr*>(&any6), sizeof(any6));
    if (!socket.isOpen()) {
        sockaddr_in any4{};
        any4.sin_family = AF_INET;
        socket = listenOn(reinterpret_cast<const sockaddr*>(&any4), sizeof(any4));
    }
    return socket;
}

TcpListener::TcpListener(Responder& responder, SocketEvents& events, MainQueue& queue,
                         Withdrawals& withdrawals, FileDescriptor socket, std::string type)
    : events_(events),
      queue_(queue),
      turns_(queue),
      socket_(std::move(socket)),
      advertisement_(responder, queue, withdrawals, std::move(type), portOf(socket_)) {}

TcpListener::~TcpListener() {
    if (isWatched_) {
        events_.remove(socket_);
    }
}

void TcpListener::start() {
    watch();
    advertisement_.begin();
}

void TcpListener::handleSocket(std::uint32_t) {
    for (int count = 0; count < callersAtOnce; ++count) {
        const int caller =
            ::accept4(socket_.value(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (caller >= 0) {
            const auto socket = std::make_shared<FileDescriptor>(caller);
            turns_.post([this, socket] { handOver(std::move(*socket)); });
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != ECONNABORTED && errno != EINTR) {
            pause();
            return;
        }
    }
}

void TcpListener::handOver(FileDescriptor socket) {
    callHandler(onNewConnection,
                std::make_unique<TcpConnection>(events_, queue_, std::move(socket)));
}

void TcpListener::watch() {
    isWatched_ = events_.add(socket_, EPOLLIN, *this);
    if (!isWatched_) {
        pause();
    }
}

/// A caller that can't be taken, for want of a descriptor for example, would wake the main thread
/// without end.
void TcpListener::pause() {
    if (std::exchange(isWatched_, false)) {
        events_.remove(socket_);
    }
    turns_.postAfter(pauseSeconds, [this] { watch(); });
}

}  // namespace tessivo
