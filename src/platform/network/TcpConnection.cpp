#include "platform/network/TcpConnection.h"

#include "platform/network/ServiceDialer.h"
#include "platform/network/ServiceInquiry.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <utility>

namespace tessivo {
namespace {

/// How long the peer may leave anything without an answer: bytes, or the probes of a connection on
/// which nothing is sent (tcp(7), TCP_USER_TIMEOUT). The two may follow one another, when the first
/// bytes are sent just before the probes would give up at 5 s.
constexpr int userTimeoutMilliseconds = 4500;
constexpr int secondsToFirstProbe = 3;
constexpr int secondsBetweenProbes = 1;

constexpr std::size_t chunkSize = 64U << 10U;

void setOption(const FileDescriptor& socket, int level, int name, int value) {
    // Can't fail on an open TCP socket; one that has broken meanwhile tells so by itself.
    ::setsockopt(socket.value(), level, name, &value, sizeof(value));
}

/// The system doubles the size of the buffer for its own needs, and fills all of it with bytes when
/// they come in large packets (socket(7)). Without a size it lets the buffer grow to many MB.
constexpr int receiveBufferSize = StreamConnection::maximumUnreadBytes / 2;

void prepare(const FileDescriptor& socket) {
    setOption(socket, SOL_SOCKET, SO_RCVBUF, receiveBufferSize);
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    setOption(socket, IPPROTO_TCP, TCP_USER_TIMEOUT, userTimeoutMilliseconds);
    setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
    setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, secondsToFirstProbe);
    setOption(socket, IPPROTO_TCP, TCP_KEEPINTVL, secondsBetweenProbes);
}

}  // namespace

TcpConnection::TcpConnection(SocketEvents& events, MainQueue& queue, FileDescriptor socket)
    : events_(events), turns_(queue), socket_(std::move(socket)) {}

TcpConnection::TcpConnection(SocketEvents& events, MainQueue& queue,
                             std::unique_ptr<ServiceDialer> dialer,
                             std::function<void(CallEnd)> onEnded)
    : events_(events), turns_(queue), dialer_(std::move(dialer)), onEnded_(std::move(onEnded)) {}

TcpConnection::~TcpConnection() {
    end(State::cancelled);
}

void TcpConnection::start() {
    if (!dialer_) {
        turns_.post([this] { open(); });
        return;
    }
    dialer_->start([this](FileDescriptor socket) {
        inquiry_ = dialer_->takeInquiry();
        callEnd_ = dialer_->isPlaced() ? CallEnd::notTaken : CallEnd::unplaced;
        dialer_.reset();
        socket_ = std::move(socket);
        if (socket_.isOpen()) {
            open();
        } else {
            end(State::failed);
        }
    });
}

bool TcpConnection::wasRefused() const {
    return inquiry_ && inquiry_->wasConfirmed();
}

void TcpConnection::open() {
    if (isOver()) {
        return;
    }
    prepare(socket_);
    state_ = State::ready;
    callEnd_ = CallEnd::opened;
    watched_ = EPOLLRDHUP;
    if (!events_.add(socket_, watched_, *this)) {
        watched_ = 0;
        end(State::failed);
        return;
    }
    flush();
    take();
    watch();
    if (!isOver()) {
        tell();
    }
}

void TcpConnection::send(Message message) {
    if (isOver()) {
        return;
    }
    outgoing_.push(std::move(message));
    if (state_ == State::ready) {
        flush();
        watch();
    }
}

void TcpConnection::receive(std::size_t minimum, std::size_t maximum, Completion completion) {
    assert(minimum >= 1 && minimum <= maximum && !receive_);
    receive_ = Receive{minimum, maximum, std::move(completion)};
    if (isOver()) {
        turns_.post([this] { serve(); });
    } else if (state_ == State::ready) {
        take();
        watch();
    }
}

void TcpConnection::cancel() {
    if (state_ == State::ready) {
        takeAvailable();
    }
    end(State::cancelled);
}

void TcpConnection::handleSocket(std::uint32_t events) {
    if ((events & (EPOLLERR | EPOLLHUP | EPOLLRDHUP)) != 0) {
        end(State::failed);
        return;
    }
    if ((events & EPOLLOUT) != 0) {
        flush();
    }
    take();
    watch();
}

/// A socket that is broken tells so by an event of its own, here and in `takeAvailable`.
void TcpConnection::flush() {
    for (auto bytes = outgoing_.next(); !bytes.empty(); bytes = outgoing_.next()) {
        const ssize_t count = ::send(socket_.value(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0) {
            return;
        }
        outgoing_.advance(static_cast<std::size_t>(count));
    }
}

void TcpConnection::take() {
    takeAvailable();
    if (receive_ && taken_.size() >= receive_->minimum) {
        turns_.post([this] { serve(); });
    }
}

void TcpConnection::takeAvailable() {
    std::array<char, chunkSize> chunk;
    while (receive_ && taken_.size() < receive_->maximum) {
        const std::size_t wanted = std::min(chunk.size(), receive_->maximum - taken_.size());
        const ssize_t count = ::recv(socket_.value(), chunk.data(), wanted, 0);
        if (count > 0) {
            taken_.append(chunk.data(), static_cast<std::size_t>(count));
        }
        if (count < static_cast<ssize_t>(wanted)) {
            return;
        }
    }
}

/// Runs by `turns_` only, because completions never run within a call of this class.
void TcpConnection::serve() {
    if (isOver() && socket_.isOpen()) {
        takeAvailable();
    }
    if (!receive_ || (taken_.size() < receive_->minimum && !isOver())) {
        return;
    }
    const Receive receive = std::move(*std::exchange(receive_, std::nullopt));
    std::string bytes = std::exchange(taken_, {});
    receive.completion(bytes.empty() ? std::nullopt : std::optional(std::move(bytes)));
}

void TcpConnection::watch() {
    const bool isReading = receive_ && taken_.size() < receive_->minimum;
    const bool isWriting = outgoing_.size() > 0;
    const std::uint32_t wanted =
        EPOLLRDHUP | (isReading ? EPOLLIN : 0U) | (isWriting ? EPOLLOUT : 0U);
    if (wanted != watched_) {
        watched_ = wanted;
        if (!events_.change(socket_, watched_, *this)) {
            end(State::failed);
        }
    }
}

void TcpConnection::end(State state) {
    if (isOver()) {
        return;
    }
    state_ = state;
    outgoing_ = {};
    if (watched_ != 0) {
        events_.remove(socket_);
    }
    if (state == State::cancelled) {
        dialer_.reset();
        socket_ = FileDescriptor();
    }
    turns_.post([this] { finish(); });
    if (onEnded_) {
        onEnded_(callEnd_);
    }
}

/// What arrived goes to whoever waits for it, one receive per turn, before the end is told.
void TcpConnection::finish() {
    if (receive_) {
        turns_.post([this] { finish(); });
        serve();
    } else {
        socket_ = FileDescriptor();
        tell();
    }
}

void TcpConnection::tell() {
    callHandler(onStateChange, state_);
}

}  // namespace tessivo
