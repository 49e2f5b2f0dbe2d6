#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedNetwork.h"
#include "support/NetworkWorld.h"

namespace tessivo::test {
namespace {

class SimulatedWorld final : public NetworkWorld {
public:
    Network& here() override { return here_; }
    Network& there() override { return there_; }
    bool runUntil(const std::function<bool()>& condition) override {
        for (int step = 0; step < 3000 && !condition(); ++step) {
            queue_.advance(0.01);
        }
        return condition();
    }

private:
    SimulatedMainQueue queue_;
    SimulatedNetwork network_{queue_};
    SimulatedComputer& here_ = network_.addComputer("here");
    SimulatedComputer& there_ = network_.addComputer("there");
};

}  // namespace

std::unique_ptr<NetworkWorld> makeNetworkWorld() {
    return std::make_unique<SimulatedWorld>();
}

}  // namespace tessivo::test
