#pragma once

#include "base/Signal.h"
#include "platform/Network.h"
#include "platform/Turns.h"
#include "sync/LiveState.h"
#include "sync/RivalWatch.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessivo {

/// Whether this computer may tell its live state.
struct AdminNetworkStatus {
    enum class Kind { checking, broadcasting, conflict };

    Kind kind = Kind::checking;
    /// Of a conflict only: the name of the other admin computer, or why there is no listener.
    std::string conflict;

    friend bool operator==(const AdminNetworkStatus&, const AdminNetworkStatus&) = default;
};

/// Tells the live state to every display station on the local network, once it has made sure that
/// no other computer does: two admins would take each other's stations. It broadcasts until it is
/// destroyed, which withdraws the service and closes the connections. Main thread only.
class AdminBroadcaster {
public:
    enum class Field { status, connections, rival };

    static constexpr const char* serviceType = "_tessivo._tcp";
    /// How long another admin has to show up, in seconds.
    static constexpr double checkDuration = 1.5;
    /// How long one has to answer that did, in seconds.
    static constexpr double answerDuration = 1.0;
    /// How many stations are served; whoever comes beyond is closed at once. Far more than any
    /// stage has, and few enough to leave the program descriptors for its files.
    static constexpr std::size_t maximumStations = 512;

    /// What is given here outlives the broadcaster.
    AdminBroadcaster(Network& network, MainQueue& mainQueue);
    AdminBroadcaster(const AdminBroadcaster&) = delete;
    AdminBroadcaster& operator=(const AdminBroadcaster&) = delete;

    /// Emitted after each assignment to a field, also when its value stays the same.
    Signal<Field> didChange;

    /// Looks for another admin; the name of one that answers becomes a conflict at once, silence
    /// for `checkDuration` opens the broadcast. The network goes on advertising a computer that has
    /// lost its power for over an hour: that one doesn't answer. Does nothing while a check or the
    /// broadcast runs. A check isn't repeated: an admin that comes later is only told as a rival.
    void startChecking();

    /// Sends `state` to every station, those whose connection isn't ready yet included, and keeps
    /// it for those to come.
    void update(LiveState state);

    /// The name of another admin that leads, too, as when a network was in two parts; empty without
    /// any.
    std::string rival() const { return rivals_ ? rivals_->rival() : std::string(); }
    const AdminNetworkStatus& status() const { return status_; }
    const std::optional<LiveState>& latestState() const { return latestState_; }
    /// Stations whose connection hasn't failed yet.
    std::size_t connectionCount() const { return connections_.size(); }

private:
    void setStatus(AdminNetworkStatus status);
    /// Another admin that was seen.
    struct Call {
        ServiceEndpoint other;
        std::unique_ptr<StreamConnection> connection;
    };

    void call(const ServiceEndpoint& other);
    void waitFor(double seconds);
    void decide();
    void endCheck();
    void refuse(const ServiceEndpoint& other);
    void beginBroadcasting();
    void accept(std::unique_ptr<StreamConnection> connection);
    void handleState(StreamConnection& connection, StreamConnection::State state);

    Network& network_;
    Turns endOfCheck_;
    AdminNetworkStatus status_;
    /// In the order of their arrival, so that equal runs send in equal order.
    std::vector<std::unique_ptr<StreamConnection>> connections_;
    std::unique_ptr<ServiceListener> listener_;
    /// Present while a check is undecided.
    std::unique_ptr<ServiceBrowser> conflictBrowser_;
    std::vector<Call> calls_;           // by the check
    int waits_ = 0;                     // until that is decided
    bool isOverdue_ = false;            // for others to show up
    std::optional<RivalWatch> rivals_;  // while the broadcast runs
    std::optional<LiveState> latestState_;
    StreamConnection::Message latestFrame_;  // of that
};

}  // namespace tessivo
