#include <QCoreApplication>
#include <QEventLoop>

#include "Library.h"
#include "platform/network/LocalNetwork.h"
#include "platform/qt/QtMainQueue.h"
#include "sync/AdminBroadcaster.h"
#include "sync/NetworkFraming.h"

#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

using namespace tessivo;

namespace {

using Clock = std::chrono::steady_clock;

void require(bool holds) {
    if (!holds) {
        std::perror("bench_network");
        std::abort();
    }
}

/// Sockets that a thread of their own reads from.
class Stations {
public:
    /// They call `port` on this computer. `onAllRead` runs in their thread.
    Stations(std::size_t count, std::uint16_t port, std::function<void()> onAllRead)
        : epoll_(epoll_create1(EPOLL_CLOEXEC)), onAllRead_(std::move(onAllRead)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        for (std::size_t i = 0; i < count; ++i) {
            const FileDescriptor& socket =
                sockets_.emplace_back(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
            require(::connect(socket.value(), reinterpret_cast<const sockaddr*>(&address),
                              sizeof(address)) == 0);
            epoll_event event{EPOLLIN, {.fd = socket.value()}};
            require(epoll_ctl(epoll_.value(), EPOLL_CTL_ADD, socket.value(), &event) == 0);
        }
        thread_ = std::thread([this] { read(); });
    }
    ~Stations() {
        isOver_ = true;
        ::shutdown(sockets_.front().value(), SHUT_RDWR);
        thread_.join();
    }

    /// How many bytes shall come, to all of them together.
    void expect(std::size_t bytes) { missing_ = bytes; }
    /// When the last of them was read.
    Clock::time_point readAt() const { return readAt_; }

private:
    void read() {
        std::vector<char> bytes(256U << 10U);
        std::array<epoll_event, 64> events{};
        while (!isOver_) {
            const int count = epoll_wait(epoll_.value(), events.data(), events.size(), -1);
            for (std::size_t i = 0; count > 0 && i < static_cast<std::size_t>(count); ++i) {
                const ssize_t size =
                    ::recv(events[i].data.fd, bytes.data(), bytes.size(), MSG_DONTWAIT);
                if (size > 0 && (missing_ -= static_cast<std::size_t>(size)) == 0) {
                    readAt_ = Clock::now();
                    onAllRead_();
                }
            }
        }
    }

    FileDescriptor epoll_;
    std::function<void()> onAllRead_;
    std::vector<FileDescriptor> sockets_;
    std::atomic<std::size_t> missing_ = 0;
    std::atomic<bool> isOver_ = false;
    Clock::time_point readAt_;  // handed over by the main queue
    std::thread thread_;
};

/// The port of the only socket of this process that listens.
std::uint16_t listeningPort() {
    for (int file = 0; file < 1024; ++file) {
        int isListening = 0;
        socklen_t size = sizeof(isListening);
        sockaddr_in6 address{};
        socklen_t addressSize = sizeof(address);
        if (::getsockopt(file, SOL_SOCKET, SO_ACCEPTCONN, &isListening, &size) == 0 &&
            isListening != 0 &&
            ::getsockname(file, reinterpret_cast<sockaddr*>(&address), &addressSize) == 0 &&
            address.sin6_family != AF_UNIX) {
            return ntohs(address.sin6_port);
        }
    }
    std::abort();
}

/// Runs the event loop until `condition` holds.
void runUntil(const std::function<bool()>& condition) {
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

/// An admin and its stations.
class Admin {
public:
    Admin(QtMainQueue& queue, std::size_t stationCount)
        : stationCount_(stationCount), network_(queue), broadcaster_(network_, queue) {
        broadcaster_.startChecking();
        runUntil([this] {
            return broadcaster_.status().kind == AdminNetworkStatus::Kind::broadcasting;
        });
        stations_.emplace(stationCount, listeningPort(),
                          [&queue, this] { queue.post([this] { ++rounds_; }); });
        runUntil([this] { return broadcaster_.connectionCount() == stationCount_; });
    }

    /// From the update to the last byte read, in milliseconds.
    double send(const LiveState& state, std::size_t frameSize) {
        stations_->expect(stationCount_ * frameSize);
        const int before = rounds_;
        const auto start = Clock::now();
        broadcaster_.update(state);
        runUntil([&] { return rounds_ > before; });
        return std::chrono::duration<double, std::milli>(stations_->readAt() - start).count();
    }

private:
    std::size_t stationCount_;
    LocalNetwork network_;
    AdminBroadcaster broadcaster_;
    std::optional<Stations> stations_;
    int rounds_ = 0;
};

/// Plain sockets that are sent the same bytes: what it costs at the least.
class BareSockets {
public:
    BareSockets(QtMainQueue& queue, std::size_t stationCount) {
        const FileDescriptor listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof(address);
        auto* where = reinterpret_cast<sockaddr*>(&address);
        require(::bind(listener.value(), where, size) == 0 &&
                ::listen(listener.value(), SOMAXCONN) == 0 &&
                ::getsockname(listener.value(), where, &size) == 0);
        stations_.emplace(stationCount, ntohs(address.sin_port),
                          [&queue, this] { queue.post([this] { ++rounds_; }); });
        const int on = 1;
        for (std::size_t i = 0; i < stationCount; ++i) {
            const FileDescriptor& socket =
                sockets_.emplace_back(::accept4(listener.value(), nullptr, nullptr, SOCK_CLOEXEC));
            require(::setsockopt(socket.value(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof(on)) == 0);
        }
    }

    double send(const std::string& frame) {
        stations_->expect(sockets_.size() * frame.size());
        const int before = rounds_;
        const auto start = Clock::now();
        for (const FileDescriptor& socket : sockets_) {
            require(::send(socket.value(), frame.data(), frame.size(), 0) ==
                    static_cast<ssize_t>(frame.size()));
        }
        runUntil([&] { return rounds_ > before; });
        return std::chrono::duration<double, std::milli>(stations_->readAt() - start).count();
    }

private:
    std::vector<FileDescriptor> sockets_;
    std::optional<Stations> stations_;
    int rounds_ = 0;
};

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

LiveState liveState(int songs) {
    return {bench::makeLibrary(1, songs, 5).front(), 3, {700'000'000.0}};
}

/// One live state to all stations beside bare sockets, in turn.
void liveStateToStations(benchmark::State& state) {
    const LiveState live = liveState(60);
    const auto stationCount = static_cast<std::size_t>(state.range(0));
    const std::string json = encodeJson(live);
    const std::string frame = *NetworkFraming::frame(json);
    QtMainQueue queue;
    Admin admin(queue, stationCount);
    BareSockets bare(queue, stationCount);
    std::vector<double> adminTimes;
    std::vector<double> bareTimes;
    std::vector<double> encodeTimes;
    for (auto _ : state) {
        bareTimes.push_back(bare.send(frame));
        adminTimes.push_back(admin.send(live, frame.size()));
        const auto start = Clock::now();
        benchmark::DoNotOptimize(encodeJson(live));
        encodeTimes.push_back(
            std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    }
    state.counters["admin_min_ms"] = std::ranges::min(adminTimes);
    state.counters["bare_min_ms"] = std::ranges::min(bareTimes);
    state.counters["bytes"] = static_cast<double>(frame.size());
    state.counters["admin_ms"] = median(adminTimes);
    state.counters["bare_ms"] = median(bareTimes);
    state.counters["encode_ms"] = median(encodeTimes);
    state.counters["ratio"] = median(adminTimes) / median(bareTimes);
}

BENCHMARK(liveStateToStations)
    ->ArgName("stations")
    ->Arg(1)
    ->Arg(3)
    ->Arg(10)
    ->Arg(30)
    ->Arg(100)
    ->Arg(250)
    ->Iterations(300)
    ->Unit(benchmark::kMillisecond);

/// A step of the cursor, from the admin's state to a station's, without the way between them.
void codeLiveState(benchmark::State& state) {
    const LiveState live = liveState(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(decodeLiveState(encodeJson(live)));
    }
}

BENCHMARK(codeLiveState)
    ->ArgName("songs")
    ->Arg(10)
    ->Arg(30)
    ->Arg(100)
    ->Arg(300)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argumentCount, char** arguments) {
    const QCoreApplication application(argumentCount, arguments);
    rlimit files{};
    require(getrlimit(RLIMIT_NOFILE, &files) == 0);
    files.rlim_cur = files.rlim_max;  // four for each station
    require(setrlimit(RLIMIT_NOFILE, &files) == 0);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
