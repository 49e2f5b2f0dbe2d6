#pragma once

#include "platform/ServiceListener.h"
#include "platform/Turns.h"
#include "platform/network/ServiceAdvertisement.h"
#include "platform/network/SocketEvents.h"

namespace tessivo {

/// A TCP port that Avahi advertises.
class TcpListener final : public ServiceListener, private SocketEvents::Handler {
public:
    /// A socket that listens on a free port, on IPv6 and IPv4, or on IPv4 where there is no IPv6;
    /// none when that fails.
    static FileDescriptor openPort();

    /// `socket` is one that `openPort` gave.
    TcpListener(Responder& responder, SocketEvents& events, MainQueue& queue,
                Withdrawals& withdrawals, FileDescriptor socket, std::string type);
    ~TcpListener() override;
    TcpListener(const TcpListener&) = delete;
    TcpListener& operator=(const TcpListener&) = delete;

    void start() override;
    std::string name() const override { return advertisement_.name(); }

private:
    void handleSocket(std::uint32_t events) override;
    void handOver(FileDescriptor socket);
    void watch();
    void pause();

    SocketEvents& events_;
    MainQueue& queue_;
    Turns turns_;
    FileDescriptor socket_;
    bool isWatched_ = false;
    ServiceAdvertisement advertisement_;
};

}  // namespace tessivo
