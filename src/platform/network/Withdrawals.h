#pragma once

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace tessivo {

/// The services that this program has just withdrawn. The responder keeps a withdrawn service for a
/// second (RFC 6762, 10.1), during which a new browser would take it for somebody else's. Avahi's
/// thread only.
class Withdrawals {
public:
    /// What that second and the way of the withdrawal through the responder may take together.
    static constexpr std::chrono::milliseconds duration{2000};

    void add(const std::string& name, const std::string& type) {
        remove(name, type);
        services_.push_back({name, type, Clock::now() + duration});
    }
    /// It is there again, or has really gone.
    void remove(const std::string& name, const std::string& type) {
        std::erase_if(services_, [&](const Service& service) {
            return service.until < Clock::now() || service.isCalled(name, type);
        });
    }
    bool contain(const std::string& name, const std::string& type) const {
        return std::ranges::any_of(services_, [&](const Service& service) {
            return service.until > Clock::now() && service.isCalled(name, type);
        });
    }

private:
    using Clock = std::chrono::steady_clock;
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
