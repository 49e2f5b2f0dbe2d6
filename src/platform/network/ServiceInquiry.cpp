#include "platform/network/ServiceInquiry.h"

#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace tessivo {
namespace {

constexpr std::uint16_t responderPort = 5353;

// The head of a message (RFC 1035, 4.1.1): six numbers of two bytes, most significant first.
constexpr std::size_t headSize = 12;
constexpr unsigned char responseBit = 0x80;  // of the third byte
constexpr std::size_t answerCountAt = 6;

void append(std::string& message, std::string_view label) {
    message += static_cast<char>(label.size());
    message += label;
}

/// One question, for the record that says where the service is.
std::string questionFor(const ServiceEndpoint& service) {
    std::string message("\0\0\0\0\0\1\0\0\0\0\0\0", headSize);
    append(message, service.name);
    for (std::string_view rest :
         {std::string_view(service.type), std::string_view(service.domain)}) {
        while (!rest.empty()) {
            const std::string_view label = rest.substr(0, rest.find('.'));
            append(message, label);
            rest.remove_prefix(std::min(rest.size(), label.size() + 1));
        }
    }
    return message + std::string("\0\0\x21\0\1", 5);  // the root, SRV (RFC 2782), IN
}

}  // namespace

ServiceInquiry::ServiceInquiry(SocketEvents& events, const sockaddr_storage& computer,
                               const ServiceEndpoint& service)
    : events_(events),
      socket_(::socket(computer.ss_family, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    sockaddr_storage responder = computer;
    // The port is at the same place in the addresses of both families.
    reinterpret_cast<sockaddr_in&>(responder).sin_port = htons(responderPort);
    const std::string question = questionFor(service);
    isWatched_ = ::connect(socket_.value(), reinterpret_cast<const sockaddr*>(&responder),
                           sizeof(responder)) == 0 &&
                 ::send(socket_.value(), question.data(), question.size(), 0) > 0 &&
                 events_.add(socket_, EPOLLIN, *this);
}

ServiceInquiry::~ServiceInquiry() {
    if (isWatched_) {
        events_.remove(socket_);
    }
}

/// Only the responder of that computer can have sent what arrives, and to nothing but the question.
void ServiceInquiry::handleSocket(std::uint32_t) {
    std::array<unsigned char, headSize> head;
    const ssize_t size = ::recv(socket_.value(), head.data(), head.size(), 0);
    wasConfirmed_ = size == static_cast<ssize_t>(headSize) && (head[2] & responseBit) != 0 &&
                    (head[answerCountAt] != 0 || head[answerCountAt + 1] != 0);
    events_.remove(socket_);
    isWatched_ = false;
}

}  // namespace tessivo
