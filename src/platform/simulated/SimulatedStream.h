#pragma once

#include "platform/OutgoingMessages.h"
#include "platform/StreamConnection.h"

#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tessivo {

class MainQueue;

/// What a computer hangs on. A test may change it at any time.
struct SimulatedCable {
    double latency = 0.001;          ///< seconds that this computer adds to each way
    std::size_t segmentSize = 1448;  ///< most bytes that travel as one
    bool isStalled = false;          ///< no further byte leaves or arrives
};

/// One TCP connection with both of its ends, from the call that opens it. Kept alive by the handles
/// on its ends.
class SimulatedLink : public std::enable_shared_from_this<SimulatedLink> {
public:
    enum class Side : std::size_t { client, server };
    using State = StreamConnection::State;

    SimulatedLink(MainQueue& queue, const SimulatedCable& client);

    /// The handle on one end, once per side.
    std::unique_ptr<StreamConnection> makeEnd(Side side);

    /// What the client's call leads to: somebody takes it with `answer`, or refuses it, or the
    /// computer isn't there.
    std::function<void(const std::shared_ptr<SimulatedLink>&)> onOpening;
    /// Called in a turn of its own when the client's end is over, however that came.
    std::function<void()> onClientEnded;

    /// The other computer took the call.
    void answer(const SimulatedCable& server);
    /// It is there, but takes no call.
    void refuse();
    /// Moves what may move; to be called after a cable has changed.
    void pump();
    /// Both ends break, and what is on its way is lost.
    void cut();
    /// The server's end closes once `bytes` more bytes have gone towards the client, if any.
    void truncateAfter(std::optional<std::size_t> bytes);

private:
    class End;
    struct Receive {
        std::size_t minimum = 0;
        std::size_t maximum = 0;
        StreamConnection::Completion completion;
    };
    struct Half {
        End* handle = nullptr;  // while it exists
        const SimulatedCable* cable = nullptr;
        bool isStarted = false;
        State state = State::preparing;
        OutgoingMessages outgoing;
        std::deque<std::string> incoming;  // on their way here; an empty one ends the stream
        std::size_t incomingSize = 0;
        std::string unread;
        std::optional<Receive> receive;

        bool isOver() const { return state == State::failed || state == State::cancelled; }
    };

    Half& at(Side side) { return halves_[static_cast<std::size_t>(side)]; }
    static Side opposite(Side side) { return side == Side::client ? Side::server : Side::client; }
    double latency() const;
    void post(double seconds, void (SimulatedLink::*step)(Side), Side side);

    void start(Side side);
    void call(Side side);
    void open(Side side);
    void pumpTowards(Side side);
    std::size_t allowance(Side side);
    void deliver(Side side);
    void serve(Side side);
    void end(Side side, State state);
    void finish(Side side);
    void close(Side side, State state);
    void tell(Side side);

    MainQueue& queue_;
    std::array<Half, 2> halves_;
    std::optional<std::size_t> bytesUntilTruncated_;
    bool wasRefused_ = false;
};

}  // namespace tessivo
