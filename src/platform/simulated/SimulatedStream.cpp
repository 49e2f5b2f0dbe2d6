#include "platform/simulated/SimulatedStream.h"

#include "base/Lifetime.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace tessivo {

/// What the owner of one end holds.
class SimulatedLink::End final : public StreamConnection {
public:
    End(std::shared_ptr<SimulatedLink> link, Side side) : link_(std::move(link)), side_(side) {
        link_->at(side_).handle = this;
    }
    ~End() override {
        link_->at(side_).handle = nullptr;
        link_->at(side_).receive.reset();
        link_->close(side_, State::cancelled);
    }

    void start() override { link_->start(side_); }
    bool wasRefused() const override { return link_->wasRefused_; }
    void cancel() override { link_->close(side_, State::cancelled); }

    void send(Message message) override {
        link_->at(side_).outgoing.push(std::move(message));
        link_->pump();
    }

    void receive(std::size_t minimum, std::size_t maximum, Completion completion) override {
        assert(minimum >= 1 && minimum <= maximum && !link_->at(side_).receive);
        link_->at(side_).receive = Receive{minimum, maximum, std::move(completion)};
        link_->post(0.0, &SimulatedLink::serve, side_);
        link_->pump();
    }

private:
    std::shared_ptr<SimulatedLink> link_;
    Side side_;
};

SimulatedLink::SimulatedLink(MainQueue& queue, const SimulatedCable& client) : queue_(queue) {
    at(Side::client).cable = &client;
}

std::unique_ptr<StreamConnection> SimulatedLink::makeEnd(Side side) {
    return std::make_unique<End>(shared_from_this(), side);
}

void SimulatedLink::answer(const SimulatedCable& server) {
    at(Side::server).cable = &server;
    post(latency(), &SimulatedLink::open, Side::client);
}

double SimulatedLink::latency() const {
    double total = 0.0;
    for (const Half& half : halves_) {
        total += half.cable != nullptr ? half.cable->latency : 0.0;
    }
    return total;
}

/// Runs `step` later, if the link is still there.
void SimulatedLink::post(double seconds, void (SimulatedLink::*step)(Side), Side side) {
    queue_.postAfter(seconds, [weak = weak_from_this(), step, side] {
        if (const auto link = weak.lock()) {
            (link.get()->*step)(side);
        }
    });
}

void SimulatedLink::start(Side side) {
    at(side).isStarted = true;
    if (at(side).isOver()) {
        post(0.0, &SimulatedLink::finish, side);
    } else if (side == Side::client) {
        post(latency(), &SimulatedLink::call, side);
    } else {
        post(0.0, &SimulatedLink::open, side);
    }
}

void SimulatedLink::call(Side side) {
    if (!at(side).isOver()) {
        onOpening(shared_from_this());
    }
}

void SimulatedLink::open(Side side) {
    if (at(side).state == State::preparing) {
        at(side).state = State::ready;
        tell(side);
        pump();
    }
}

void SimulatedLink::pump() {
    pumpTowards(Side::client);
    pumpTowards(Side::server);
}

void SimulatedLink::pumpTowards(Side side) {
    Half& to = at(side);
    Half& from = at(opposite(side));
    if (from.state != State::ready || to.state != State::ready) {
        return;
    }
    const std::size_t segmentSize = std::min(from.cable->segmentSize, to.cable->segmentSize);
    for (;;) {
        const auto bytes = from.outgoing.next().substr(0, std::min(segmentSize, allowance(side)));
        if (bytes.empty()) {
            break;
        }
        to.incoming.emplace_back(bytes);
        to.incomingSize += bytes.size();
        if (side == Side::client && bytesUntilTruncated_) {
            *bytesUntilTruncated_ -= bytes.size();
        }
        from.outgoing.advance(bytes.size());
        post(latency(), &SimulatedLink::deliver, side);
    }
    if (side == Side::client && bytesUntilTruncated_ == 0U) {
        close(Side::server, State::failed);
    }
}

/// How many more bytes may set out towards this side.
std::size_t SimulatedLink::allowance(Side side) {
    const Half& to = at(side);
    if (to.cable->isStalled || at(opposite(side)).cable->isStalled) {
        return 0;
    }
    const std::size_t room =
        StreamConnection::maximumUnreadBytes + (to.receive ? to.receive->maximum : 0);
    const std::size_t taken = to.unread.size() + to.incomingSize;
    const std::size_t allowed = room > taken ? room - taken : 0;
    return side == Side::client ? std::min(allowed, bytesUntilTruncated_.value_or(allowed))
                                : allowed;
}

/// One segment arrives. The first one sent is the first to arrive, even if the cable got faster.
void SimulatedLink::deliver(Side side) {
    Half& to = at(side);
    if (to.incoming.empty()) {
        return;  // lost when the connection broke
    }
    const std::string segment = std::move(to.incoming.front());
    to.incoming.pop_front();
    if (segment.empty()) {
        end(side, State::failed);
        return;
    }
    to.unread += segment;
    to.incomingSize -= segment.size();
    serve(side);
}

void SimulatedLink::serve(Side side) {
    Half& half = at(side);
    if (!half.receive || (half.unread.size() < half.receive->minimum && !half.isOver())) {
        return;
    }
    const Receive receive = std::move(*std::exchange(half.receive, std::nullopt));
    std::string bytes = half.unread.substr(0, receive.maximum);
    half.unread.erase(0, bytes.size());
    receive.completion(bytes.empty() ? std::nullopt : std::optional(std::move(bytes)));
    pump();
}

void SimulatedLink::end(Side side, State state) {
    Half& half = at(side);
    if (half.isOver()) {
        return;
    }
    half.state = state;
    half.incoming.clear();
    half.incomingSize = 0;
    if (half.isStarted) {
        post(0.0, &SimulatedLink::finish, side);
    }
    if (side == Side::client && onClientEnded) {
        queue_.post(onClientEnded);
    }
}

/// What arrived goes to whoever waits for it, one receive per turn, before the end is told.
void SimulatedLink::finish(Side side) {
    if (at(side).receive) {
        serve(side);
        post(0.0, &SimulatedLink::finish, side);
    } else {
        tell(side);
    }
}

/// This side closes: the other one hears of it behind what is already on its way.
void SimulatedLink::close(Side side, State state) {
    end(side, state);
    at(opposite(side)).incoming.emplace_back();
    post(latency(), &SimulatedLink::deliver, opposite(side));
}

void SimulatedLink::refuse() {
    wasRefused_ = true;
    cut();
}

void SimulatedLink::cut() {
    end(Side::client, State::failed);
    end(Side::server, State::failed);
}

void SimulatedLink::truncateAfter(std::optional<std::size_t> bytes) {
    bytesUntilTruncated_ = bytes;
    pump();
}

void SimulatedLink::tell(Side side) {
    const Half& half = at(side);
    if (half.handle != nullptr) {
        callHandler(half.handle->onStateChange, half.state);
    }
}

}  // namespace tessivo
