#include "sync/NetworkFraming.h"

#include <cassert>
#include <limits>
#include <memory>
#include <utility>

namespace tessivo::NetworkFraming {
namespace {

std::uint32_t payloadSize(std::string_view header) {
    std::uint32_t size = 0;
    for (const char byte : header) {
        size = size << 8U | static_cast<unsigned char>(byte);
    }
    return size;
}

}  // namespace

StreamConnection::Message frame(std::string_view payload) {
    assert(payload.size() <= std::numeric_limits<std::uint32_t>::max());
    std::string bytes;
    bytes.reserve(headerSize + payload.size());
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes.push_back(static_cast<char>(payload.size() >> shift & 0xFFU));
    }
    bytes += payload;
    return std::make_shared<const std::string>(std::move(bytes));
}

void send(std::string_view payload, StreamConnection& connection) {
    connection.send(frame(payload));
}

void receiveOne(StreamConnection& connection, StreamConnection::Completion completion) {
    auto receivePayload = [&connection, completion = std::move(completion)](
                              const std::optional<std::string>& header) {
        if (!header || header->size() != headerSize) {
            completion(std::nullopt);
            return;
        }
        const std::uint32_t size = payloadSize(*header);
        if (size == 0 || size > maximumPayloadSize) {
            completion(std::nullopt);
            return;
        }
        connection.receive(size, size, completion);
    };
    connection.receive(headerSize, headerSize, std::move(receivePayload));
}

}  // namespace tessivo::NetworkFraming
