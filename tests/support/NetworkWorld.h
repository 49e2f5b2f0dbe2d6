#pragma once

#include "platform/Network.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo::test {

/// Two computers on one network, real or simulated: what is promised of one holds for the other.
class NetworkWorld {
public:
    virtual ~NetworkWorld() = default;

    virtual Network& here() = 0;
    virtual Network& there() = 0;
    /// Lets time pass until `condition` holds; false when it doesn't within half a minute.
    virtual bool runUntil(const std::function<bool()>& condition) = 0;
};

/// Each test program has one of its own.
std::unique_ptr<NetworkWorld> makeNetworkWorld();

/// A service type that no other test of this run has used: a responder remembers for a while.
inline std::string freshServiceType() {
    static int count = 0;
    return "_promise" + std::to_string(++count) + "._tcp";
}

/// A browser and all that it reported.
struct Reports {
    Reports(Network& network, const std::string& type) : browser(network.makeBrowser(type)) {
        browser->onResultsChanged = [this](const auto& services) { all.push_back(services); };
        browser->start();
    }
    /// How many services there are by the last report; none before the first.
    std::optional<std::size_t> count() const {
        return all.empty() ? std::nullopt : std::optional(all.back().size());
    }

    std::unique_ptr<ServiceBrowser> browser;
    std::vector<std::vector<ServiceEndpoint>> all;
};

/// One end of a connection and what it was told.
struct End {
    using State = StreamConnection::State;

    void open(std::unique_ptr<StreamConnection> opened) {
        connection = std::move(opened);
        connection->onStateChange = [this](State state) { states.push_back(state); };
        connection->start();
    }
    bool is(State state) const { return !states.empty() && states.back() == state; }
    void send(std::string bytes) {
        connection->send(std::make_shared<const std::string>(std::move(bytes)));
    }
    void receive(std::size_t minimum, std::size_t maximum) {
        connection->receive(minimum, maximum, [this](std::optional<std::string> bytes) {
            received.push_back(std::move(bytes));
        });
    }

    std::unique_ptr<StreamConnection> connection;
    std::vector<State> states;
    std::vector<std::optional<std::string>> received;
};

/// A connection between the two computers, open on both sides when constructed.
struct Connected {
    explicit Connected(std::unique_ptr<NetworkWorld> both = makeNetworkWorld())
        : world(std::move(both)) {
        listener->onNewConnection = [this](auto connection) { far.open(std::move(connection)); };
        listener->start();
        isFound = world->runUntil([this] { return reports.count() == 1U; });
        if (isFound) {
            near.open(world->here().connect(reports.all.back().front()));
        }
    }
    bool runUntil(const std::function<bool()>& condition) const {
        return world->runUntil(condition);
    }
    bool isOpen() {
        return isFound &&
               runUntil([this] { return near.is(End::State::ready) && far.is(End::State::ready); });
    }

    std::unique_ptr<NetworkWorld> world;
    std::string type = freshServiceType();
    std::unique_ptr<ServiceListener> listener = world->there().makeListener(type);
    Reports reports{world->here(), type};
    bool isFound = false;
    End near;
    End far;
};

}  // namespace tessivo::test
