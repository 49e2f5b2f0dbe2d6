#pragma once

#include "platform/StreamConnection.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// How messages follow one another on a stream: each is a payload after its length in bytes, an
/// unsigned 32-bit big-endian integer. Holds no state.
namespace tessivo::NetworkFraming {

constexpr std::size_t headerSize = 4;
/// The longest payload that is received: a ceiling on what one peer can make a station hold. The
/// sender doesn't enforce it.
constexpr std::uint32_t maximumPayloadSize = 19'999'999;

/// One frame, to be sent on any number of connections. `payload` is shorter than 4 GiB.
StreamConnection::Message frame(std::string_view payload);

/// Queues `payload` as one frame on `connection`. How that ends is told by its state only.
void send(std::string_view payload, StreamConnection& connection);

/// Reads one frame from `connection`, with nothing else being received on it, and calls
/// `completion` once with its payload, possibly shorter than announced when the stream ended; with
/// nothing when there was no frame or its length was 0 or more than `maximumPayloadSize`. After
/// that the stream can't be read any further. Destroying the connection drops the completion.
void receiveOne(StreamConnection& connection, StreamConnection::Completion completion);

}  // namespace tessivo::NetworkFraming
