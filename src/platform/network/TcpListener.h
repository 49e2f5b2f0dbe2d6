#pragma once

#include "platform/ServiceListener.h"
#include "platform/Turns.h"
#include "platform/network/ServiceAdvertisement.h"
#include "platform/network/SocketEvents.h"

#include <memory>

namespace tessivo {

/// A TCP port that Avahi advertises.
class TcpListener final : public ServiceListener, private SocketEvents::Handler {
public:
    /// A socket that listens on a free port, on IPv6 and IPv4, or on IPv4 where there is no IPv6;
    /// none when that fails.
    static FileDescriptor openPort();

    /// `socket` is one that `openPort` gave.
    TcpListener(AvahiThread& avahi, SocketEvents& events, MainQueue& queue, FileDescriptor socket,
                const std::string& type, std::shared_ptr<Withdrawals> withdrawals);
    ~TcpListener() override;
    TcpListener(const TcpListener&) = delete;
    TcpListener& operator=(const TcpListener&) = delete;

    void start() override;

private:
    void handleSocket(std::uint32_t events) override;
    void handOver(FileDescriptor socket);
    void pause();

    AvahiThread& avahi_;
    SocketEvents& events_;
    MainQueue& queue_;
    Turns turns_;
    FileDescriptor socket_;
    bool isStarted_ = false;
    std::shared_ptr<ServiceAdvertisement> advertisement_;
};

}  // namespace tessivo
