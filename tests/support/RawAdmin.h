#pragma once

#include "platform/simulated/SimulatedNetwork.h"
#include "sync/AdminBroadcaster.h"
#include "sync/NetworkFraming.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessivo::test {

/// A service like an admin's that says what it is given, byte by byte.
struct RawAdmin {
    explicit RawAdmin(SimulatedComputer& computer)
        : listener(computer.makeListener(AdminBroadcaster::serviceType)) {
        listener->onNewConnection = [this](std::unique_ptr<StreamConnection> accepted) {
            stations.push_back(std::move(accepted));
            stations.back()->start();
            onStation();
        };
        listener->start();
    }

    void write(std::string bytes) {
        stations.back()->send(std::make_shared<const std::string>(std::move(bytes)));
    }
    void say(std::string_view payload) { NetworkFraming::send(payload, *stations.back()); }

    std::function<void()> onStation = [] {};
    std::unique_ptr<ServiceListener> listener;
    std::vector<std::unique_ptr<StreamConnection>> stations;
};

}  // namespace tessivo::test
