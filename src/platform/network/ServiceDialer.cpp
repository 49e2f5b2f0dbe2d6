#include "platform/network/ServiceDialer.h"

#include <arpa/inet.h>
#include <netinet/in.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace tessivo {
namespace {

/// How long an address may take before the next one is tried too (RFC 8305, 5).
constexpr double patience = 0.25;
/// How long all of it may take, in seconds. The system alone would wait for minutes.
constexpr double timeLimit = 7.0;

constexpr uint withoutText = 4;  // AVAHI_LOOKUP_NO_TXT

template <typename Address>
SocketAddress socketAddress(const Address& address) {
    SocketAddress result;
    static_assert(sizeof(address) <= sizeof(result.storage));
    std::memcpy(&result.storage, &address, sizeof(address));
    result.size = sizeof(address);
    return result;
}

/// Nothing when `text` is no address.
std::optional<SocketAddress> socketAddress(const QByteArray& text, std::uint16_t port,
                                           int interface) {
    sockaddr_in v4{};
    if (::inet_pton(AF_INET, text.constData(), &v4.sin_addr) == 1) {
        v4.sin_family = AF_INET;
        v4.sin_port = htons(port);
        return socketAddress(v4);
    }
    sockaddr_in6 v6{};
    if (::inet_pton(AF_INET6, text.constData(), &v6.sin6_addr) != 1) {
        return std::nullopt;
    }
    v6.sin6_family = AF_INET6;
    v6.sin6_port = htons(port);
    if (IN6_IS_ADDR_LINKLOCAL(&v6.sin6_addr)) {
        v6.sin6_scope_id = static_cast<std::uint32_t>(interface);
    }
    return socketAddress(v6);
}

}  // namespace

/// The call of one address.
class ServiceDialer::Attempt final : private SocketEvents::Handler {
public:
    Attempt(ServiceDialer& dialer, FileDescriptor socket)
        : dialer_(dialer), turns_(dialer.queue_), socket_(std::move(socket)) {
        if (!dialer_.events_.add(socket_, EPOLLOUT, *this)) {
            socket_ = FileDescriptor();
            settle();
        }
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
        settle();
    }
    void settle() {
        isSettled_ = true;
        turns_.post([this] { dialer_.settle(*this); });
    }

    ServiceDialer& dialer_;
    Turns turns_;
    FileDescriptor socket_;
    bool isSettled_ = false;
};

ServiceDialer::ServiceDialer(Responder& responder, SocketEvents& events, MainQueue& queue,
                             ServiceEndpoint service, std::vector<ServiceSighting> sightings)
    : responder_(responder),
      events_(events),
      queue_(queue),
      turns_(queue),
      service_(std::move(service)),
      sightings_(std::move(sightings)) {}

ServiceDialer::~ServiceDialer() = default;

void ServiceDialer::start(Done done) {
    done_ = std::move(done);
    resolutionCount_ = sightings_.size();
    for (const ServiceSighting& sighting : sightings_) {
        const QDBusMessage method = Responder::method(
            QStringLiteral("ResolveService"),
            {sighting.interface, sighting.protocol, QString::fromStdString(service_.name),
             QString::fromStdString(service_.type), QString::fromStdString(service_.domain),
             sighting.protocol, withoutText});
        responder_.call(method, resolutions_.guard([this](const QDBusMessage& answer) {
            handleResolution(answer);
        }));
    }
    turns_.postAfter(timeLimit, [this] { finish(FileDescriptor()); });
}

/// An error, too, is an answer: it has no address.
void ServiceDialer::handleResolution(const QDBusMessage& answer) {
    --resolutionCount_;
    const auto arguments = answer.arguments();
    const auto address = socketAddress(arguments.value(7).toString().toLatin1(),
                                       static_cast<std::uint16_t>(arguments.value(8).toUInt()),
                                       arguments.value(0).toInt());
    if (address) {
        add(*address);
    } else {
        failIfNothingIsLeft();
    }
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

/// Runs by an attempt's turns only, because it destroys the attempt.
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
    if (resolutionCount_ == 0 && addresses_.empty() && attempts_.empty()) {
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
