#include "sync/ReceiverClient.h"

#include "platform/Background.h"
#include "sync/AdminBroadcaster.h"
#include "sync/NetworkFraming.h"

#include <cassert>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {
namespace {

/// To read a longer message takes longer than a key may wait: 20 MB take 0.1 to 0.2 s. A show of
/// 500 songs has 0.3 MB.
constexpr std::size_t longMessage = 1U << 20U;

}  // namespace

ReceiverClient::ReceiverClient(Network& network, MainQueue& mainQueue, Background& background)
    : network_(network), background_(background), reading_(mainQueue) {}

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
    disconnect();
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

void ReceiverClient::disconnect() {
    connection_.reset();
    reading_.callOff();
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
            disconnect();
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
    NetworkFraming::receiveOne(*connection_, [this](std::optional<std::string> payload) {
        if (payload) {
            handleMessage(std::move(*payload));
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

/// The next message waits until this one is read, so that only one is held at a time.
void ReceiverClient::handleMessage(std::string payload) {
    if (payload.size() < longMessage) {
        take(decodeLiveState(payload));
        return;
    }
    background_.run([this, post = reading_.poster(), payload = std::move(payload)] {
        post([this, state = std::make_shared<std::optional<LiveState>>(decodeLiveState(payload))] {
            take(std::move(*state));
        });
    });
}

void ReceiverClient::take(std::optional<LiveState> state) {
    if (state) {
        setLiveState(std::move(state));
    }
    receiveNext();
}

}  // namespace tessivo
