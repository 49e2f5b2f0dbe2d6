#include "platform/network/SocketEvents.h"

#include <QtGlobal>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <system_error>

namespace tessivo {

SocketEvents::SocketEvents()
    : epoll_(epoll_create1(EPOLL_CLOEXEC)), notifier_(epoll_.value(), QSocketNotifier::Read) {
    if (!epoll_.isOpen()) {
        throw std::system_error(errno, std::generic_category(), "epoll");
    }
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { dispatch(); });
}

bool SocketEvents::add(const FileDescriptor& socket, std::uint32_t events, Handler& handler) {
    epoll_event event{events, {.ptr = &handler}};
    return control(EPOLL_CTL_ADD, socket, &event);
}

bool SocketEvents::change(const FileDescriptor& socket, std::uint32_t events, Handler& handler) {
    epoll_event event{events, {.ptr = &handler}};
    return control(EPOLL_CTL_MOD, socket, &event);
}

void SocketEvents::remove(const FileDescriptor& socket) {
    control(EPOLL_CTL_DEL, socket, nullptr);
}

bool SocketEvents::control(int operation, const FileDescriptor& socket, epoll_event* event) {
    if (epoll_ctl(epoll_.value(), operation, socket.value(), event) == 0) {
        return true;
    }
    qWarning("a socket can't be watched: %s", std::strerror(errno));
    return false;
}

void SocketEvents::dispatch() {
    std::array<epoll_event, 64> events{};
    const int count = epoll_wait(epoll_.value(), events.data(), static_cast<int>(events.size()), 0);
    for (std::size_t i = 0; count > 0 && i < static_cast<std::size_t>(count); ++i) {
        static_cast<Handler*>(events[i].data.ptr)->handleSocket(events[i].events);
    }
}

}  // namespace tessivo
