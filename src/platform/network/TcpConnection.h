#pragma once

#include "platform/OutgoingMessages.h"
#include "platform/StreamConnection.h"
#include "platform/Turns.h"
#include "platform/network/CallEnd.h"
#include "platform/network/SocketEvents.h"

#include <memory>
#include <optional>

namespace tessivo {

class ServiceDialer;
class ServiceInquiry;

/// A connection over the system's TCP, on its sockets directly: nothing is read that nobody
/// asked for, the system is given a small buffer for what arrives meanwhile, and nothing waits to
/// leave but in `OutgoingMessages`: so both bounds are kept without a copy.
///
/// A pulled cable fails it after 5 to 9.5 seconds. So does a peer that lives but takes nothing in
/// for 4.5 seconds, once the system's own buffers are full: TCP can't tell the two apart.
class TcpConnection final : public StreamConnection, private SocketEvents::Handler {
public:
    /// One that came in.
    TcpConnection(SocketEvents& events, MainQueue& queue, FileDescriptor socket);
    /// One that is still to be opened. `onEnded` is called when it is over, however that came.
    TcpConnection(SocketEvents& events, MainQueue& queue, std::unique_ptr<ServiceDialer> dialer,
                  std::function<void(CallEnd)> onEnded);
    ~TcpConnection() override;

    void start() override;
    bool wasRefused() const override;
    void send(Message message) override;
    void receive(std::size_t minimum, std::size_t maximum, Completion completion) override;
    void cancel() override;

private:
    struct Receive {
        std::size_t minimum;
        std::size_t maximum;
        Completion completion;
    };

    void handleSocket(std::uint32_t events) override;
    bool isOver() const { return state_ == State::failed || state_ == State::cancelled; }
    void open();
    void flush();
    void take();
    void takeAvailable();
    void serve();
    void watch();
    void end(State state);
    void finish();
    void tell();

    SocketEvents& events_;
    Turns turns_;
    std::unique_ptr<ServiceDialer> dialer_;
    std::unique_ptr<ServiceInquiry> inquiry_;  // about one that failed
    std::function<void(CallEnd)> onEnded_;
    CallEnd callEnd_ = CallEnd::unplaced;  // if it ended now
    FileDescriptor socket_;
    State state_ = State::preparing;
    OutgoingMessages outgoing_;
    std::optional<Receive> receive_;
    std::string taken_;  // for the receive
    std::uint32_t watched_ = 0;
};

}  // namespace tessivo
