#include "platform/network/ServiceDialer.h"

#include <netdb.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

namespace tessivo {
namespace {

/// How long an address may take before the next one is tried too (RFC 8305, 5).
constexpr double patience = 0.25;

/// From one look at the time to the next, in seconds.
constexpr double longestPause = 0.1;

/// The address in an answer; none in an error. One of a link (fe80::...) holds with its interface.
std::optional<sockaddr_storage> addressIn(const QDBusMessage& answer) {
    const auto arguments = answer.arguments();
    std::string address = arguments.value(7).toString().toStdString();
    if (address.find(':') != std::string::npos) {
        address.append(1, '%').append(std::to_string(arguments.value(0).toInt()));
    }
    const std::string port = std::to_string(arguments.value(8).toUInt());
    addrinfo hints{};
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV;  // asks nobody, so it doesn't wait
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (address.empty() || ::getaddrinfo(address.c_str(), port.c_str(), &hints, &found) != 0) {
        return std::nullopt;
    }
    sockaddr_storage result{};
    std::memcpy(&result, found->ai_addr, found->ai_addrlen);
    ::freeaddrinfo(found);
    return result;
}

}  // namespace

QDBusMessage resolution(const char* method, const ServiceEndpoint& service,
                        const ServiceSighting& sighting) {
    constexpr uint withoutText = 4;  // AVAHI_LOOKUP_NO_TXT
    return Responder::method(
        method, {sighting.interface, sighting.protocol, QString::fromStdString(service.name),
                 QString::fromStdString(service.type), QString::fromStdString(service.domain),
                 sighting.protocol, withoutText});
}

/// The call of one address.
class ServiceDialer::Attempt final : private SocketEvents::Handler {
public:
    Attempt(ServiceDialer& dialer, FileDescriptor socket, const sockaddr_storage& address)
        : dialer_(dialer), turns_(dialer.queue_), socket_(std::move(socket)), address_(address) {
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
        dialer_.handleError(error, address_);
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
    const sockaddr_storage address_;
    bool isSettled_ = false;
};

ServiceDialer::ServiceDialer(Responder& responder, SocketEvents& events, MainQueue& queue,
                             ServiceEndpoint service, std::vector<ServiceSighting> sightings,
                             std::function<double()> limit)
    : responder_(responder),
      events_(events),
      queue_(queue),
      turns_(queue),
      service_(std::move(service)),
      sightings_(std::move(sightings)),
      limit_(std::move(limit)) {}

ServiceDialer::~ServiceDialer() = default;

void ServiceDialer::start(Done done) {
    done_ = std::move(done);
    resolutionCount_ = sightings_.size();
    for (const ServiceSighting& sighting : sightings_) {
        responder_.call(
            resolution("ResolveService", service_, sighting),
            resolutions_.guard([this](const QDBusMessage& answer) { handleResolution(answer); }));
    }
    watchTime(0.0);
}

/// Another service may come up meanwhile, and must not wait for the end of this attempt.
void ServiceDialer::watchTime(double passed) {
    const double left = limit_() - passed;
    if (left <= 0.0) {
        finish(FileDescriptor());
        return;
    }
    const double pause = std::min(left, longestPause);
    turns_.postAfter(pause, [this, passed, pause] { watchTime(passed + pause); });
}

/// An error, too, is an answer.
void ServiceDialer::handleResolution(const QDBusMessage& answer) {
    --resolutionCount_;
    if (const auto address = addressIn(answer)) {
        add(*address);
    } else {
        hasUnplaced_ = true;
        failIfNothingIsLeft();
    }
}

void ServiceDialer::handleError(int error, const sockaddr_storage& address) {
    if (error == ECONNREFUSED && !inquiry_) {
        inquiry_ = std::make_unique<ServiceInquiry>(events_, address, service_);
    }
}

void ServiceDialer::add(const sockaddr_storage& address) {
    addresses_.push_back(address);
    if (attempts_.empty()) {
        tryNext();
    } else if (addresses_.size() == 1) {
        turns_.postAfter(patience, [this] { tryNext(); });
    }
}

void ServiceDialer::tryNext() {
    while (done_ && !addresses_.empty()) {
        const sockaddr_storage address = addresses_.front();
        addresses_.pop_front();
        FileDescriptor socket(
            ::socket(address.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        const auto* where = reinterpret_cast<const sockaddr*>(&address);
        if (::connect(socket.value(), where, sizeof(address)) == 0 || errno == EINPROGRESS) {
            attempts_.push_back(std::make_unique<Attempt>(*this, std::move(socket), address));
            turns_.postAfter(patience, [this] { tryNext(); });
            return;
        }
        handleError(errno, address);
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
