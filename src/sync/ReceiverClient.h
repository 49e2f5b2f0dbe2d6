#pragma once

#include "base/Signal.h"
#include "platform/Network.h"
#include "platform/Turns.h"
#include "sync/LiveState.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tessivo {

class Background;

enum class ReceiverStatus {
    searching,  ///< no usable connection
    connected,  ///< the connection to an admin is open
};

/// A display station's side: finds an admin, connects to it and publishes the last live state that
/// it told. Stays with its admin while the connection lasts, whatever else turns up, and sends
/// nothing. Has no schedule of its own: after a loss, the next report of the browser connects
/// again. Main thread only.
class ReceiverClient {
public:
    enum class Field { status, liveState };

    /// What is given here outlives the client.
    ReceiverClient(Network& network, MainQueue& mainQueue, Background& background);
    ReceiverClient(const ReceiverClient&) = delete;
    ReceiverClient& operator=(const ReceiverClient&) = delete;

    /// Emitted after each assignment to a field, also when its value stays the same.
    Signal<Field> didChange;

    /// Starts looking for an admin; does nothing when it does already.
    void start();
    /// Leaves the admin and stops looking for one, as before `start`.
    void stop();

    ReceiverStatus status() const { return status_; }
    /// The name of the computer to which the last connection was made; empty before.
    const std::string& adminName() const { return adminName_; }
    /// The last state that could be read from the present connection. A message that is none
    /// changes nothing. When the stream can't be read any further, the last state stays until the
    /// connection is lost.
    const std::optional<LiveState>& liveState() const { return liveState_; }
    /// Hands over the state that was the last one when the connection was lost; once.
    std::optional<LiveState> takeLostState() { return std::exchange(lostState_, std::nullopt); }

private:
    void setStatus(ReceiverStatus status);
    void setLiveState(std::optional<LiveState> state);

    void connect(const ServiceEndpoint& endpoint);
    void disconnect();
    void handleState(StreamConnection::State state);
    void receiveNext();
    void handleMessage(std::string payload);
    void take(std::optional<LiveState> state);
    void dropTheRest();

    Network& network_;
    Background& background_;
    Turns reading_;  // of a message, elsewhere
    ReceiverStatus status_ = ReceiverStatus::searching;
    std::optional<LiveState> liveState_;
    std::optional<LiveState> lostState_;
    std::string adminName_;
    std::unique_ptr<StreamConnection> connection_;
    std::unique_ptr<ServiceBrowser> browser_;
};

}  // namespace tessivo
