#include "sync/AdminBroadcaster.h"

#include "sync/NetworkFraming.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tessivo {

using Kind = AdminNetworkStatus::Kind;

AdminBroadcaster::AdminBroadcaster(Network& network, MainQueue& mainQueue)
    : network_(network), endOfCheck_(mainQueue) {}

void AdminBroadcaster::startChecking() {
    if (listener_ || conflictBrowser_) {
        return;
    }
    listener_ = network_.makeListener(serviceType);
    conflictBrowser_ = network_.makeBrowser(serviceType);
    conflictBrowser_->onResultsChanged = [this](const std::vector<ServiceEndpoint>& services) {
        std::erase_if(calls_, [&](const Call& one) {
            return std::ranges::find(services, one.other) == services.end();
        });
        std::ranges::for_each(services, [this](const auto& service) { call(service); });
    };
    conflictBrowser_->start();
    isOverdue_ = false;
    endOfCheck_.postAfter(checkDuration, [this] { isOverdue_ = true; });
    waitFor(checkDuration);
    setStatus({Kind::checking, {}});
}

void AdminBroadcaster::update(LiveState state) {
    latestState_ = std::move(state);
    latestFrame_ = NetworkFraming::frame(encodeJson(*latestState_));
    for (const auto& connection : connections_) {
        connection->send(latestFrame_);
    }
}

void AdminBroadcaster::setStatus(AdminNetworkStatus status) {
    status_ = std::move(status);
    didChange.emit(Field::status);
}

void AdminBroadcaster::call(const ServiceEndpoint& other) {
    if (isOverdue_ || std::ranges::find(calls_, other, &Call::other) != calls_.end()) {
        return;
    }
    waitFor(answerDuration);
    calls_.push_back({other, network_.connect(other)});
    StreamConnection& connection = *calls_.back().connection;
    connection.onStateChange = [this, other](StreamConnection::State state) {
        if (state == StreamConnection::State::ready) {
            refuse(other);
        }
    };
    connection.start();
}

/// The check is decided once nothing is waited for any more.
void AdminBroadcaster::waitFor(double seconds) {
    ++waits_;
    endOfCheck_.postAfter(seconds, [this] {
        if (--waits_ == 0) {
            decide();
        }
    });
}

/// A computer that says it has the service leads, also when nobody takes the call there: when a
/// program ends without a word, what it advertised goes within a second.
void AdminBroadcaster::decide() {
    const auto refused =
        std::ranges::find_if(calls_, [](const Call& one) { return one.connection->wasRefused(); });
    if (refused != calls_.end()) {
        refuse(ServiceEndpoint(refused->other));
    } else {
        endCheck();
        beginBroadcasting();
    }
}

void AdminBroadcaster::endCheck() {
    endOfCheck_.callOff();
    waits_ = 0;
    conflictBrowser_.reset();
    calls_.clear();
}

void AdminBroadcaster::refuse(const ServiceEndpoint& other) {
    // Copied before the call goes, which owns the endpoint.
    const std::string name = other.name.empty() ? "un autre ordinateur" : other.name;
    endCheck();
    listener_.reset();
    setStatus({Kind::conflict, name});
}

void AdminBroadcaster::beginBroadcasting() {
    assert(!conflictBrowser_);
    if (!listener_) {
        setStatus({Kind::conflict, "erreur réseau — impossible d'ouvrir le service"});
        return;
    }
    listener_->onNewConnection = [this](std::unique_ptr<StreamConnection> connection) {
        accept(std::move(connection));
    };
    listener_->start();
    rivals_.emplace(network_, serviceType, *listener_, [this] { didChange.emit(Field::rival); });
    setStatus({Kind::broadcasting, {}});
}

void AdminBroadcaster::accept(std::unique_ptr<StreamConnection> connection) {
    assert(connection);
    if (connections_.size() >= maximumStations) {
        return;
    }
    StreamConnection& accepted = *connections_.emplace_back(std::move(connection));
    accepted.onStateChange = [this, &accepted](StreamConnection::State state) {
        handleState(accepted, state);
    };
    accepted.start();
    didChange.emit(Field::connections);
}

void AdminBroadcaster::handleState(StreamConnection& connection, StreamConnection::State state) {
    assert(std::ranges::any_of(connections_,
                               [&](const auto& known) { return known.get() == &connection; }));
    switch (state) {
        case StreamConnection::State::ready:
            if (latestFrame_) {
                connection.send(latestFrame_);
            }
            break;
        case StreamConnection::State::failed:
        case StreamConnection::State::cancelled:
            std::erase_if(connections_,
                          [&](const auto& known) { return known.get() == &connection; });
            didChange.emit(Field::connections);
            break;
        case StreamConnection::State::preparing:
            break;
    }
}

}  // namespace tessivo
