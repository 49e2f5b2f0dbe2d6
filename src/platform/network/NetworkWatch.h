#pragma once

#include "base/Lifetime.h"
#include "platform/Network.h"
#include "platform/Turns.h"
#include "platform/network/Responder.h"

#include <functional>

namespace tessivo {

/// Looks every few seconds whether this computer is on a network at all, and whether the responder
/// answers: one that hangs looks to everybody else like one that has nothing to say. Main thread
/// only.
class NetworkWatch {
public:
    /// `onChange` is called after each change of the trouble.
    NetworkWatch(Responder& responder, MainQueue& queue, std::function<void()> onChange);
    NetworkWatch(const NetworkWatch&) = delete;
    NetworkWatch& operator=(const NetworkWatch&) = delete;

    Network::Trouble trouble() const { return trouble_; }

private:
    void look();
    void ask();
    void update();

    Responder& responder_;
    Turns turns_;
    std::function<void()> onChange_;
    Network::Trouble trouble_ = Network::Trouble::none;
    bool wasOnNetwork_ = false;
    bool isOffNetwork_ = false;
    bool isAnswering_ = true;
    bool isAsking_ = false;
    bool hasAnswered_ = true;  // the last question
    Lifetime question_;
    Subscription subscription_;
};

}  // namespace tessivo
