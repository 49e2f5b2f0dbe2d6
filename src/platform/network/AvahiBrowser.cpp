#include "platform/network/AvahiBrowser.h"

#include "platform/network/LocalNetwork.h"
#include "platform/network/ServiceDialer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessivo {
namespace {

// From the end of a connection to the question what there is now, in seconds: the long one when
// Avahi didn't know where a service is. A search for an address ends after 5 s without an answer,
// and Avahi repeats its question at 7 s if there is another search by then, each time later. With
// the long delay there is none: Avahi forgets the question, and asks the network anew at once.
constexpr double shortDelay = 1.0;
constexpr double longDelay = 3.0;

constexpr double roundSeconds = 1.5;
constexpr double longestPatience = 2.0;

// For a first question to the network to leave; at 1 s Avahi would go on to a second one, and to
// longer and longer pauses.
constexpr double whereSeconds = 0.9;

// AvahiLookupResultFlags
constexpr uint isFromCache = 1;
constexpr uint isOfThisComputer = 8;

}  // namespace

AvahiBrowser::AvahiBrowser(LocalNetwork& network, const std::string& type)
    : network_(network),
      type_(type),
      turns_(network.queue_),
      pause_(network.queue_),
      rhythm_(network.rhythms_[type]),
      object_(network.responder_, network.queue_,
              Responder::method("ServiceBrowserPrepare",
                                {-1, -1, QString::fromStdString(type), QString(), 0U}),
              "org.freedesktop.Avahi.ServiceBrowser") {
    object_.onMade = [this] {
        hasSeenCache_ = false;
        found_.clear();
        stopCounting();  // when the object before has failed
        rhythm_.join(object_.responder(), Clock::now());
        isCounted_ = true;
        askAfreshLater();
        object_.call(object_.method("Start"), [](const auto&) {});
    };
    object_.onSignal = [this](const QDBusMessage& signal) { handleSignal(signal); };
    network_.browsers_.push_back(this);
}

AvahiBrowser::~AvahiBrowser() {
    stopCounting();
    std::erase(network_.browsers_, this);
}

void AvahiBrowser::start() {
    object_.begin();
}

std::vector<ServiceSighting> AvahiBrowser::sightings(const ServiceEndpoint& endpoint) const {
    const auto found = services_.find({endpoint.name, endpoint.domain});
    return endpoint.type == type_ && found != services_.end() ? found->second
                                                              : std::vector<ServiceSighting>();
}

void AvahiBrowser::connectionEnded(const ServiceEndpoint& endpoint, CallEnd how) {
    std::erase(ended_, endpoint);
    ended_.push_back(endpoint);
    if (how == CallEnd::opened) {
        tried_.clear();
        rounds_ = 0;
        askAgainAfter(shortDelay);
        return;
    }
    askWhere(endpoint);
    isPlaced_ = isPlaced_ && how == CallEnd::notTaken;
    // Whoever calls one again while there are others doesn't want those.
    const bool isRoundOver = isTried(endpoint);
    tried_.push_back(endpoint);
    if (isRoundOver || !hasUntried()) {
        tried_.clear();
        ++rounds_;
        askAgainAfter(std::exchange(isPlaced_, true) ? shortDelay : longDelay);
    } else {
        turns_.post([this] {
            isAnswerDue_ = true;
            if (hasSeenCache_) {  // else a whole report is to come
                report();
            }
        });
    }
}

void AvahiBrowser::askAgainAfter(double seconds) {
    if (std::exchange(isAskingAgain_, true)) {
        return;
    }
    turns_.postAfter(seconds, [this] {
        isAskingAgain_ = false;
        isAnswerDue_ = true;
        if (object_.isMade()) {  // else it is about to begin
            end();
            object_.begin();
        }
    });
}

/// Avahi answers from its cache, and then doesn't ask the network: a service that moved to another
/// port while the network was cut would be looked for at the old one until its record is two
/// minutes old. A resolver that lives on makes it ask.
void AvahiBrowser::askWhere(const ServiceEndpoint& endpoint) {
    for (const ServiceSighting& sighting : sightings(endpoint)) {
        auto& question = questions_.emplace_back(std::make_unique<ResponderObject>(
            network_.responder_, network_.queue_,
            resolution("ServiceResolverPrepare", endpoint, sighting),
            "org.freedesktop.Avahi.ServiceResolver"));
        question->onMade = [object = question.get()] {
            object->call(object->method("Start"), [](const auto&) {});
        };
        question->begin();
        turns_.postAfter(whereSeconds, [this] { questions_.pop_front(); });
    }
}

bool AvahiBrowser::hasUntried() const {
    return std::ranges::any_of(endpoints(), [this](const ServiceEndpoint& known) {
        return !isTried(known) && !network_.isCalled(known);
    });
}

bool AvahiBrowser::isTried(const ServiceEndpoint& endpoint) const {
    return std::ranges::find(tried_, endpoint) != tried_.end();
}

/// A dozen computers that went without a word cost whoever tries one after another a second and a
/// half. On a slow network that may be too little for the one that is there: it has more time in
/// each round.
double AvahiBrowser::patience(const ServiceEndpoint& endpoint) const {
    const auto waiting = std::ranges::count_if(endpoints(), [&](const ServiceEndpoint& known) {
        return known != endpoint && !network_.isCalled(known);
    });
    if (waiting == 0) {
        return ServiceDialer::timeLimit;
    }
    const double first = std::clamp(roundSeconds / static_cast<double>(waiting), 0.1, 0.5);
    return std::min(std::ldexp(first, std::min(rounds_, 6)), longestPatience);
}

void AvahiBrowser::end() {
    object_.end();
    stopCounting();
}

void AvahiBrowser::stopCounting() {
    if (std::exchange(isCounted_, false)) {
        rhythm_.leave(Clock::now());
    }
}

void AvahiBrowser::askAfreshLater() {
    const auto secondsUntil = [](Clock::time_point moment) {
        return std::max(0.0, std::chrono::duration<double>(moment - Clock::now()).count());
    };
    const QuestionRhythm::Pause pause = rhythm_.nextPause(Clock::now());
    pause_.callOff();
    pause_.postAfter(secondsUntil(pause.begin), [this, pause, secondsUntil] {
        if (rhythm_.nextPause(Clock::now()).end != pause.end) {  // too late: it was held up
            askAfreshLater();
        } else if (object_.isMade()) {  // else it is about to begin
            end();
            pause_.postAfter(secondsUntil(pause.end), [this] { object_.begin(); });
        }
    });
}

/// What the responder knows already comes first, then comes what the network answers in a second.
void AvahiBrowser::handleSignal(const QDBusMessage& signal) {
    const QString kind = signal.member();
    if (kind == QLatin1String("ItemNew") || kind == QLatin1String("ItemRemove")) {
        handleItem(signal, kind == QLatin1String("ItemNew"));
        if (hasSeenCache_) {
            report();
        }
    } else if (kind == QLatin1String("CacheExhausted")) {
        hasSeenCache_ = true;
        if (!found_.empty()) {
            report();
        }
    } else if (kind == QLatin1String("AllForNow")) {
        report();
    } else if (kind == QLatin1String("Failure")) {
        object_.fail();
    }
}

void AvahiBrowser::handleItem(const QDBusMessage& item, bool isNew) {
    const auto arguments = item.arguments();
    const ServiceSighting sighting{arguments.value(0).toInt(), arguments.value(1).toInt()};
    const QString name = arguments.value(2).toString();
    const Key key{name.toStdString(), arguments.value(4).toString().toStdString()};
    auto& sightings = found_[key];
    std::erase(sightings, sighting);
    if (isNew) {
        // This computer's own name, but nothing here has it: what a program left that has just
        // ended.
        const uint flags = arguments.value(5).toUInt();
        if ((flags & (isFromCache | isOfThisComputer)) == isFromCache &&
            name == network_.responder_.hostName() && !services_.contains(key)) {
            network_.withdrawals_.add(key.first, type_, Withdrawals::heardSeconds);
        }
        sightings.push_back(sighting);
    } else if (sightings.empty()) {
        found_.erase(key);
        network_.withdrawals_.remove(key.first, type_);
    }
}

void AvahiBrowser::report() {
    services_ = found_;
    std::erase_if(services_, [this](const auto& service) {
        const double hidden = network_.withdrawals_.secondsLeft(service.first.first, type_);
        if (hidden > 0.0) {
            turns_.postAfter(hidden, [this] {
                if (hasSeenCache_) {  // else a whole report is to come
                    report();
                }
            });
        }
        return hidden > 0.0;
    });
    std::erase_if(ended_, [this](const auto& endpoint) { return sightings(endpoint).empty(); });
    auto found = endpoints();
    const auto isNew = [this](const ServiceEndpoint& service) {
        return reported_ && std::ranges::find(*reported_, service) == reported_->end();
    };
    if (std::ranges::any_of(found, isNew)) {
        rounds_ = 0;  // it mustn't wait long for those that were tried for minutes
    }
    if (std::exchange(isAnswerDue_, false) || found != reported_) {
        reported_ = found;
        callHandler(onResultsChanged, found);
    }
}

/// Those to which no connection has ended come first, then the one that ended longest ago. A
/// computer that went without a word stays listed for up to 75 minutes (RFC 6762, 10): whoever
/// takes the first one must not come back to it for ever while another is there.
std::vector<ServiceEndpoint> AvahiBrowser::endpoints() const {
    std::vector<ServiceEndpoint> result;
    for (const auto& [key, sightings] : services_) {
        result.push_back({key.first, type_, key.second});
    }
    std::ranges::stable_sort(result, {}, [this](const ServiceEndpoint& endpoint) {
        const auto place = std::ranges::find(ended_, endpoint);
        return place == ended_.end() ? -1 : place - ended_.begin();
    });
    return result;
}

}  // namespace tessivo
