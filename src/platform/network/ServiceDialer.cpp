#include "platform/network/ServiceDialer.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace tessivo {
namespace {

/// How long an address may take before the next one is tried too (RFC 8305, 5).
constexpr double patience = 0.25;
/// How long all of it may take, in seconds. The system alone would wait for minutes.
constexpr double timeLimit = 7.0;

}  // namespace

/// The call of one address.
class ServiceDialer::Attempt final : private SocketEvents::Handler {
public:
    Attempt(ServiceDialer& dialer, FileDescriptor socket)
        : dialer_(dialer), turns_(dialer.queue_), socket_(std::move(socket)) {
        dialer_.events_.add(socket_, EPOLLOUT, *this);
    }
    ~Attempt() {
        if (!isSettled_) {
            dialer_.events_.remove(socket_);
        }
    }

    /// The socket if it opened, else none.
    FileDescriptor takeSocket() {
        int error = 0;
        socklen_t size = sizeof(error);
        const bool isOpen =
            ::getsockopt(socket_.value(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0;
        return isOpen ? std::move(socket_) : FileDescriptor();
    }

private:
    void handleSocket(std::uint32_t) override {
        dialer_.events_.remove(socket_);
        isSettled_ = true;
        turns_.post([this] { dialer_.settle(*this); });
    }

    ServiceDialer& dialer_;
    Turns turns_;
    FileDescriptor socket_;
    bool isSettled_ = false;
};

ServiceDialer::ServiceDialer(AvahiThread& avahi, SocketEvents& events, MainQueue& queue,
                             ServiceEndpoint service, std::vector<ServiceSighting> sightings)
    : avahi_(avahi), events_(events), queue_(queue), turns_(queue) {
    auto tell = [this, post = turns_.poster()](std::optional<SocketAddress> address) {
        post([this, address] {
            if (address) {
                add(*address);
            } else {
                isResolved_ = true;
                failIfNothingIsLeft();
            }
        });
    };
    resolution_ = std::make_shared<ServiceResolution>(std::move(service), std::move(sightings),
                                                      std::move(tell));
}

ServiceDialer::~ServiceDialer() {
    avahi_.remove(resolution_);
}

void ServiceDialer::start(Done done) {
    done_ = std::move(done);
    avahi_.add(resolution_);
    turns_.postAfter(timeLimit, [this] { finish(FileDescriptor()); });
}

void ServiceDialer::add(const SocketAddress& address) {
    addresses_.push_back(address);
    if (attempts_.empty()) {
        tryNext();
    } else if (addresses_.size() == 1) {
        turns_.postAfter(patience, [this] { tryNext(); });
    }
}

void ServiceDialer::tryNext() {
    while (done_ && !addresses_.empty()) {
        const SocketAddress address = addresses_.front();
        addresses_.pop_front();
        FileDescriptor socket(
            ::socket(address.storage.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        const auto* where = reinterpret_cast<const sockaddr*>(&address.storage);
        if (::connect(socket.value(), where, address.size) == 0 || errno == EINPROGRESS) {
            attempts_.push_back(std::make_unique<Attempt>(*this, std::move(socket)));
            turns_.postAfter(patience, [this] { tryNext(); });
            return;
        }
    }
    failIfNothingIsLeft();
}

/// In a turn of its own.
void ServiceDialer::settle(Attempt& attempt) {
    FileDescriptor socket = attempt.takeSocket();
    std::erase_if(attempts_, [&](const auto& known) { return known.get() == &attempt; });
    if (socket.isOpen()) {
        finish(std::move(socket));
    } else {
        tryNext();
    }
}

void ServiceDialer::failIfNothingIsLeft() {
    if (isResolved_ && addresses_.empty() && attempts_.empty()) {
        finish(FileDescriptor());
    }
}

void ServiceDialer::finish(FileDescriptor socket) {
    attempts_.clear();
    addresses_.clear();
    if (const auto done = std::exchange(done_, nullptr)) {
        done(std::move(socket));
    }
}

}  // namespace tessivo
