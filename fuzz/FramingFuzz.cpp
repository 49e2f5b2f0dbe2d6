#include "Fuzz.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "sync/NetworkFraming.h"
#include "sync/Stream.h"

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

using namespace tessivo;

namespace {

/// The payloads on a whole stream that then ends, read in one piece.
std::vector<std::string> payloadsOf(std::string_view stream) {
    std::vector<std::string> payloads;
    while (stream.size() >= NetworkFraming::headerSize) {
        std::size_t size = 0;
        for (std::size_t i = 0; i < NetworkFraming::headerSize; ++i) {
            size = size * 256 + static_cast<unsigned char>(stream[i]);
        }
        stream.remove_prefix(NetworkFraming::headerSize);
        if (size == 0 || size > NetworkFraming::maximumPayloadSize || stream.empty()) {
            break;
        }
        payloads.emplace_back(stream.substr(0, size));
        stream.remove_prefix(std::min(size, stream.size()));
    }
    return payloads;
}

}  // namespace

/// Any bytes as a stream, cut into segments of a length that the first byte gives: frames are read
/// as if it had come in one piece.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::string bytes(data + 1, data + size);
    test::Stream stream(data[0] + 1U);
    std::vector<std::string> received;
    const std::function<void()> receiveNext = [&] {
        NetworkFraming::receiveOne(*stream.in, [&](std::optional<std::string> payload) {
            if (payload) {
                received.push_back(std::move(*payload));
                receiveNext();
            }
        });
    };
    receiveNext();
    stream.write(bytes);
    stream.close();
    require(received == payloadsOf(bytes));
    require(stream.states.back() == StreamConnection::State::failed);
    return 0;
}
