#pragma once

#include "platform/Network.h"
#include "platform/simulated/SimulatedStream.h"

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {

class MainQueue;
class SimulatedNetwork;

/// One computer on a simulated network, with a cable that a test pulls, delays and squeezes. It has
/// one process, whose objects it makes.
class SimulatedComputer final : public Network {
public:
    SimulatedComputer(SimulatedNetwork& network, std::string name)
        : network_(network), name_(std::move(name)) {}

    Trouble trouble() const override { return isDeaf_ ? Trouble::responderSilent : Trouble::none; }
    std::unique_ptr<ServiceBrowser> makeBrowser(const std::string& type) override;
    std::unique_ptr<ServiceListener> makeListener(const std::string& type) override;
    std::unique_ptr<StreamConnection> connect(const ServiceEndpoint& endpoint) override;

    const std::string& name() const { return name_; }
    /// From now on no port can be opened here.
    void setOutOfPorts(bool isOut) { isOutOfPorts_ = isOut; }

    /// Of streams, and of the news of services beyond what it takes anyway.
    void setLatency(double seconds) { cable_.latency = seconds; }
    /// While deaf, no news of a service comes in here. What was missed is asked for afterwards.
    void setDeaf(bool isDeaf);
    void setSegmentSize(std::size_t bytes) { cable_.segmentSize = bytes; }
    /// While stalled, connections stay open but no byte sets out on them, either way.
    void setStalled(bool isStalled);
    /// The services here end without a word: others go on seeing them, but nobody answers there,
    /// until this computer advertises again.
    void losePower() { isPowerless_ = true; }
    /// Every connection breaks on both sides; the cable is in again at once.
    void cutConnections();
    /// Whoever accepted a connection closes it once `bytes` more bytes have set out from there.
    void truncateAfter(std::size_t bytes);
    /// Takes back all that was done to the cable, but what has broken stays broken.
    void repairCable();

    /// How often a browser here asked the network.
    int questionCount() const { return questionCount_; }

private:
    class Browser;
    class Listener;

    friend class SimulatedNetwork;

    void add(const std::shared_ptr<SimulatedLink>& link);
    double newsDelay() const;
    template <typename Change>
    void forEachLink(Change change);

    SimulatedNetwork& network_;
    std::string name_;
    SimulatedCable cable_;
    bool isOutOfPorts_ = false;
    bool isDeaf_ = false;
    bool isPowerless_ = false;
    int questionCount_ = 0;
    std::vector<Browser*> browsers_;                   // those that were started
    std::vector<std::weak_ptr<SimulatedLink>> links_;  // with an end here
};

/// Computers that see each other's services, in the time of `queue`. Equal histories give equal
/// runs. It outlives all that its computers make.
class SimulatedNetwork {
public:
    /// How long the news of a service takes, in seconds; so long as on a real network.
    static constexpr double discoveryDelay = 0.15;
    /// A browser asks the network again this long after a connection ended, in seconds.
    static constexpr double askAgainDelay = 1.0;
    /// A call to a computer that isn't there fails after this, in seconds.
    static constexpr double callTimeLimit = 0.5;

    explicit SimulatedNetwork(MainQueue& queue) : queue_(queue) {}
    SimulatedNetwork(const SimulatedNetwork&) = delete;
    SimulatedNetwork& operator=(const SimulatedNetwork&) = delete;

    SimulatedComputer& addComputer(std::string name);

private:
    friend class SimulatedComputer;

    std::vector<ServiceEndpoint> servicesOfType(const std::string& type) const;
    std::string freeName(const std::string& wanted, const std::string& type) const;
    void servicesChanged();
    void open(const ServiceEndpoint& endpoint, const std::shared_ptr<SimulatedLink>& link);

    MainQueue& queue_;
    std::vector<SimulatedComputer::Listener*> listeners_;  // those that advertise
    std::vector<ServiceEndpoint> records_;  // of services that have gone without a word
    std::vector<std::unique_ptr<SimulatedComputer>> computers_;
};

}  // namespace tessivo
