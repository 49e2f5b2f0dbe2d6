#include "platform/network/NetworkWatch.h"

#include <ifaddrs.h>
#include <net/if.h>

#include <utility>

namespace tessivo {
namespace {

/// From one look to the next, in seconds: what a responder may take that is only being restarted,
/// and less once there is trouble, whose end is awaited.
constexpr double calmInterval = 3.0;
constexpr double troubleInterval = 1.0;

/// Whether a cable is in, or a radio has found its network.
bool isOnNetwork() {
    ifaddrs* all = nullptr;
    if (::getifaddrs(&all) != 0) {
        return true;
    }
    bool isOn = false;
    for (const ifaddrs* each = all; each != nullptr; each = each->ifa_next) {
        isOn = isOn || (each->ifa_flags & (IFF_LOOPBACK | IFF_RUNNING)) == IFF_RUNNING;
    }
    ::freeifaddrs(all);
    return isOn;
}

}  // namespace

NetworkWatch::NetworkWatch(Responder& responder, MainQueue& queue, std::function<void()> onChange)
    : responder_(responder),
      turns_(queue),
      onChange_(std::move(onChange)),
      subscription_(responder.didChange.subscribe([this] {
          question_.callOff();  // another responder never hears of it
          isAsking_ = false;
      })) {
    look();
}

void NetworkWatch::look() {
    const bool isOn = isOnNetwork();
    // A computer that works alone has lost nothing.
    wasOnNetwork_ = wasOnNetwork_ || isOn;
    isOffNetwork_ = wasOnNetwork_ && !isOn;
    isAnswering_ = hasAnswered_;
    if (!isAsking_) {
        ask();
    }
    update();
    const bool isCalm = trouble_ == Network::Trouble::none;
    turns_.postAfter(isCalm ? calmInterval : troubleInterval, [this] { look(); });
}

void NetworkWatch::ask() {
    isAsking_ = true;
    hasAnswered_ = false;
    responder_.call(Responder::method("GetState"),
                    question_.guard([this](const QDBusMessage& answer) {
                        isAsking_ = false;
                        hasAnswered_ = answer.type() != QDBusMessage::ErrorMessage;
                        isAnswering_ = isAnswering_ || hasAnswered_;
                        update();
                    }));
}

void NetworkWatch::update() {
    const auto trouble = isOffNetwork_   ? Network::Trouble::offline
                         : !isAnswering_ ? Network::Trouble::responderSilent
                                         : Network::Trouble::none;
    if (std::exchange(trouble_, trouble) != trouble) {
        callHandler(onChange_);
    }
}

}  // namespace tessivo
