#include "sync/ReceiverClient.h"

#include "sync/AdminBroadcaster.h"
#include "sync/NetworkFraming.h"

#include <cassert>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {

ReceiverClient::ReceiverClient(Network& network) : network_(network) {}

void ReceiverClient::start() {
    if (browser_) {
        return;
    }
    browser_ = network_.makeBrowser(AdminBroadcaster::serviceType);
    browser_->onResultsChanged = [this](const std::vector<ServiceEndpoint>& admins) {
        if (!connection_ && !admins.empty()) {
            connect(admins.front());
        }
    };
    browser_->start();
}

void ReceiverClient::stop() {
    connection_.reset();
    browser_.reset();
    setStatus(ReceiverStatus::searching);
    setLiveState(std::nullopt);
}

void ReceiverClient::setStatus(ReceiverStatus status) {
    status_ = status;
    didChange.emit(Field::status);
}

void ReceiverClient::setLiveState(std::optional<LiveState> state) {
    liveState_ = std::move(state);
    didChange.emit(Field::liveState);
}

void ReceiverClient::connect(const ServiceEndpoint& endpoint) {
    assert(!connection_);
    adminName_ = endpoint.name;
    connection_ = network_.connect(endpoint);
    connection_->onStateChange = [this](StreamConnection::State state) { handleState(state); };
    connection_->start();
}

void ReceiverClient::handleState(StreamConnection::State state) {
    assert(connection_);
    switch (state) {
        case StreamConnection::State::ready:
            setStatus(ReceiverStatus::connected);
            receiveNext();
            break;
        case StreamConnection::State::failed:
        case StreamConnection::State::cancelled:
            connection_.reset();
            lostState_ = std::exchange(liveState_, std::nullopt);
            setLiveState(std::nullopt);
            setStatus(ReceiverStatus::searching);
            break;
        case StreamConnection::State::preparing:
            break;
    }
}

void ReceiverClient::receiveNext() {
    // Whoever was told of the last change may have stopped the client.
    if (!connection_) {
        return;
    }
    NetworkFraming::receiveOne(*connection_, [this](const std::optional<std::string>& payload) {
        if (payload) {
            handleMessage(*payload);
        } else {
            dropTheRest();
        }
    });
}

/// Bytes that nobody takes would hide the end of the connection behind them for minutes.
void ReceiverClient::dropTheRest() {
    constexpr std::size_t most = 64U << 10U;
    connection_->receive(1, most, [this](const std::optional<std::string>& bytes) {
        if (bytes) {
            dropTheRest();
        }
    });
}

void ReceiverClient::handleMessage(std::string_view payload) {
    if (auto state = decodeLiveState(payload)) {
        setLiveState(std::move(state));
    }
    receiveNext();
}

}  // namespace tessivo
