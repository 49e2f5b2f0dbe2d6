#include "sync/RivalWatch.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tessivo {

RivalWatch::RivalWatch(Network& network, const std::string& type, const ServiceListener& own,
                       std::function<void()> onChange)
    : network_(network),
      own_(own),
      onChange_(std::move(onChange)),
      browser_(network.makeBrowser(type)) {
    browser_->onResultsChanged = [this](const std::vector<ServiceEndpoint>& services) {
        std::ranges::for_each(services, [this](const auto& service) { call(service); });
    };
    browser_->start();
}

std::string RivalWatch::rival() const {
    const auto found = std::ranges::find_if(calls_, [](const auto& call) { return call->isOpen; });
    return found == calls_.end() ? std::string() : (*found)->other.name;
}

void RivalWatch::call(const ServiceEndpoint& other) {
    const bool isKnown =
        std::ranges::any_of(calls_, [&](const auto& call) { return call->other == other; });
    if (isKnown || other.name == own_.name()) {
        return;
    }
    Call& call = *calls_.emplace_back(std::make_unique<Call>());
    call.other = other;
    call.connection = network_.connect(other);
    call.connection->onStateChange = [this, &call](StreamConnection::State state) {
        handleState(call, state);
    };
    call.connection->start();
}

void RivalWatch::handleState(Call& call, StreamConnection::State state) {
    call.isOpen = state == StreamConnection::State::ready;
    if (call.isOpen) {
        drop(call);
    } else {
        std::erase_if(calls_, [&](const auto& known) { return known.get() == &call; });
    }
    onChange_();
}

/// What it tells goes nowhere, but whoever takes nothing in is closed.
void RivalWatch::drop(Call& call) {
    constexpr std::size_t most = 64U << 10U;
    call.connection->receive(1, most, [this, &call](const std::optional<std::string>& bytes) {
        if (bytes) {
            drop(call);
        }
    });
}

}  // namespace tessivo
