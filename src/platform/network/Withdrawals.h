#pragma once

#include <algorithm>
#include <chrono>
#include <map>
#include <string>
#include <utility>

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
        ends_[{name, type}] = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                 std::chrono::duration<double>(seconds));
    }
    /// It is there again, or has really gone.
    void remove(const std::string& name, const std::string& type) { ends_.erase({name, type}); }
    /// How long a service isn't to be believed; 0 when it is.
    double secondsLeft(const std::string& name, const std::string& type) const {
        const auto end = ends_.find({name, type});
        return end == ends_.end() ? 0.0 : std::max(0.0, seconds(end->second - Clock::now()));
    }

private:
    using Clock = std::chrono::steady_clock;

    static double seconds(std::chrono::duration<double> time) { return time.count(); }

    std::map<std::pair<std::string, std::string>, Clock::time_point> ends_;
};

}  // namespace tessivo
