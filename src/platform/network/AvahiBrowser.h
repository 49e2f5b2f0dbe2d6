#pragma once

#include "platform/ServiceBrowser.h"
#include "platform/Turns.h"
#include "platform/network/CallEnd.h"
#include "platform/network/QuestionRhythm.h"
#include "platform/network/ResponderObject.h"
#include "platform/network/ServiceSighting.h"

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessivo {

class LocalNetwork;

/// The services that Avahi sees.
class AvahiBrowser final : public ServiceBrowser {
public:
    AvahiBrowser(LocalNetwork& network, const std::string& type);
    ~AvahiBrowser() override;
    AvahiBrowser(const AvahiBrowser&) = delete;
    AvahiBrowser& operator=(const AvahiBrowser&) = delete;

    void start() override;

    /// Where a service was seen; nowhere when it isn't there.
    std::vector<ServiceSighting> sightings(const ServiceEndpoint& endpoint) const;
    /// How long a connection to a service may take to open, in seconds: others may wait for their
    /// turn.
    double patience(const ServiceEndpoint& endpoint) const;
    void connectionEnded(const ServiceEndpoint& endpoint, CallEnd how);

private:
    using Clock = std::chrono::steady_clock;

    void askAfreshLater();
    void end();
    void stopCounting();
    void askAgainAfter(double seconds);
    void askWhere(const ServiceEndpoint& endpoint);
    void handleSignal(const QDBusMessage& signal);
    void handleItem(const QDBusMessage& item, bool isNew);
    void report();
    std::vector<ServiceEndpoint> endpoints() const;
    bool hasUntried() const;
    bool isTried(const ServiceEndpoint& endpoint) const;

    /// The name and the domain.
    using Key = std::pair<std::string, std::string>;
    using Sightings = std::map<Key, std::vector<ServiceSighting>>;

    LocalNetwork& network_;
    const std::string type_;
    Turns turns_;
    Turns pause_;  // of the questions
    QuestionRhythm& rhythm_;
    bool isCounted_ = false;  // by that
    ResponderObject object_;
    bool hasSeenCache_ = false;           // of the responder, by the object that there is
    Sightings found_;                     // by the same
    Sightings services_;                  // those that may be reported
    std::vector<ServiceEndpoint> ended_;  // of those, the ones to which a connection has ended
    std::vector<ServiceEndpoint> tried_;  // of those, the ones tried in vain in this round
    int rounds_ = 0;                      // in which all were tried in vain, one after the other
    bool isPlaced_ = true;                // each of those that were tried in this round
    std::deque<std::unique_ptr<ResponderObject>> questions_;  // where services are
    bool isAnswerDue_ = true;                                 // even if nothing has changed
    bool isAskingAgain_ = false;
    std::optional<std::vector<ServiceEndpoint>> reported_;
};

}  // namespace tessivo
