#pragma once

#include "platform/Network.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tessivo {

/// Looks for others that lead while this computer does, as two parts of a network may when they
/// come together again. It counts who takes a connection: what is advertised may be long gone. Main
/// thread only.
class RivalWatch {
public:
    /// `own` is the service of this computer. What is given here outlives this.
    RivalWatch(Network& network, const std::string& type, const ServiceListener& own,
               std::function<void()> onChange);
    RivalWatch(const RivalWatch&) = delete;
    RivalWatch& operator=(const RivalWatch&) = delete;

    /// The name of one; empty without any.
    std::string rival() const;

private:
    struct Call {
        ServiceEndpoint other;
        std::unique_ptr<StreamConnection> connection;
        bool isOpen = false;
    };

    void call(const ServiceEndpoint& other);
    void handleState(Call& call, StreamConnection::State state);
    void drop(Call& call);

    Network& network_;
    const ServiceListener& own_;
    std::function<void()> onChange_;
    std::vector<std::unique_ptr<Call>> calls_;
    std::unique_ptr<ServiceBrowser> browser_;
};

}  // namespace tessivo
