#include <QCoreApplication>

#include "platform/dnssd/LocalNetwork.h"
#include "platform/qt/QtMainQueue.h"

#include <cstdio>
#include <functional>
#include <memory>
#include <string>

// network_peer TYPE listen|talk|follow: one end of a connection, which prints "ready" and "failed"
// as it comes to that. "listen" and "talk" advertise a service of TYPE, which goes on sending in
// the case of "talk"; "follow" looks for one and reads all that comes.

using namespace tessivo;

namespace {

void print(StreamConnection::State state) {
    std::puts(state == StreamConnection::State::ready ? "ready" : "failed");
    std::fflush(stdout);
}

/// Holds one connection.
class Peer {
public:
    void open(std::unique_ptr<StreamConnection> connection) {
        connection_ = std::move(connection);
        connection_->onStateChange = [this](StreamConnection::State state) {
            isOpen_ = state == StreamConnection::State::ready;
            print(state);
        };
        connection_->start();
        read();
    }
    void send(const StreamConnection::Message& message) {
        if (isOpen_) {
            connection_->send(message);
        }
    }
    bool isFree() const { return !connection_; }

private:
    void read() {
        connection_->receive(1, 1U << 20U, [this](const std::optional<std::string>& bytes) {
            if (bytes) {
                read();
            }
        });
    }

    std::unique_ptr<StreamConnection> connection_;
    bool isOpen_ = false;
};

}  // namespace

int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    if (argumentCount != 3) {
        return 2;
    }
    const std::string type = arguments[1];
    const std::string role = arguments[2];
    QtMainQueue queue;
    LocalNetwork network(queue);
    Peer peer;
    if (role == "follow") {
        const auto browser = network.makeBrowser(type);
        browser->onResultsChanged = [&](const std::vector<ServiceEndpoint>& services) {
            if (peer.isFree() && !services.empty()) {
                peer.open(network.connect(services.front()));
            }
        };
        browser->start();
        return QCoreApplication::exec();
    }
    const auto listener = network.makeListener(type);
    listener->onNewConnection = [&](auto connection) { peer.open(std::move(connection)); };
    listener->start();
    const auto state = std::make_shared<const std::string>(50'000, 's');
    const auto talk = role == "talk" ? queue.repeatEvery(1.0, [&] { peer.send(state); }) : nullptr;
    return QCoreApplication::exec();
}
