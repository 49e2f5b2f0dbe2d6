#pragma once

#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"

#include <memory>
#include <string>
#include <vector>

namespace tessivo::test {

/// Two computers and one connection between them, open when constructed.
struct Stream {
    explicit Stream(std::size_t segmentSize = 1448) {
        reader.setSegmentSize(segmentSize);
        listener->onNewConnection = [this](std::unique_ptr<StreamConnection> accepted) {
            out = std::move(accepted);
            out->start();
        };
        listener->start();
        in = reader.connect({"writer", "_test._tcp", "local"});
        in->onStateChange = [this](StreamConnection::State state) { states.push_back(state); };
        in->start();
        queue.advance(1.0);
    }

    void write(std::string bytes) {
        if (!bytes.empty()) {
            out->send(std::make_shared<const std::string>(std::move(bytes)));
        }
        queue.advance(1.0);
    }
    /// The writer goes, once all that it wrote has arrived.
    void close() {
        out.reset();
        queue.advance(1.0);
    }

    SimulatedMainQueue queue;
    SimulatedNetwork network{queue};
    SimulatedComputer& writer = network.addComputer("writer");
    SimulatedComputer& reader = network.addComputer("reader");
    std::unique_ptr<ServiceListener> listener = writer.makeListener("_test._tcp");
    std::unique_ptr<StreamConnection> out;
    std::unique_ptr<StreamConnection> in;
    std::vector<StreamConnection::State> states;  ///< those that the reader was told
};

}  // namespace tessivo::test
