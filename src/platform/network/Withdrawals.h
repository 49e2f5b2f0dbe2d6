#pragma once

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace tessivo {

/// The services of this program, or of one before it, that have just gone. The responder keeps a
/// withdrawn service for a second (RFC 6762, 10.1), during which a new browser would take it for
/// somebody else's. Times in seconds.
class Withdrawals {
public:
    /// What that second and the way of our own withdrawal through the responder may take together.
    static constexpr double ownSeconds = 2.0;
    /// The same for one of which the responder has heard. Less than an admin looks for others: one
    /// that is really somebody else's must be seen in time.
    static constexpr double heardSeconds = 1.2;

    void add(const std::string& name, const std::string& type, double seconds) {
        remove(name, type);
        const auto time = std::chrono::duration_cast<Clock::duration>(Seconds(seconds));
        services_.push_back({name, type, Clock::now() + time});
    }
    /// It is there again, or has really gone.
    void remove(const std::string& name, const std::string& type) {
        std::erase_if(services_, [&](const Service& service) {
            return service.until < Clock::now() || service.isCalled(name, type);
        });
    }
    /// How long a service isn't to be believed; 0 when it is.
    double secondsLeft(const std::string& name, const std::string& type) const {
        const auto found = std::ranges::find_if(
            services_, [&](const Service& service) { return service.isCalled(name, type); });
        return found == services_.end()
                   ? 0.0
                   : std::max(0.0, Seconds(found->until - Clock::now()).count());
    }

private:
    using Clock = std::chrono::steady_clock;
    using Seconds = std::chrono::duration<double>;
    struct Service {
        std::string name;
        std::string type;
        Clock::time_point until;

        bool isCalled(const std::string& otherName, const std::string& otherType) const {
            return name == otherName && type == otherType;
        }
    };

    std::vector<Service> services_;
};

}  // namespace tessivo
