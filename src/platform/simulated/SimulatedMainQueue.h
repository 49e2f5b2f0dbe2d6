#pragma once

#include "platform/Clock.h"
#include "platform/MainQueue.h"

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

namespace tessivo {

/// Virtual time and a main queue that runs in it: nothing happens until a test lets time pass.
/// Equal histories give equal runs. Single-threaded.
class SimulatedMainQueue final : public MainQueue, public Clock {
public:
    explicit SimulatedMainQueue(Instant start = {800'000'000.0}) : now_(start) {}

    Instant now() const override { return now_; }
    Moment moment() const override { return {elapsed_}; }
    /// What happens when somebody sets the computer's clock: due times are unaffected.
    void setWallClock(Instant instant) { now_ = instant; }

    void post(Task task) override { postAfter(0.0, std::move(task)); }
    void postAfter(double seconds, Task task) override;
    std::unique_ptr<Repetition> repeatEvery(double seconds, Task task) override;

    /// Runs everything that is due now, including what that posts.
    void drain() { advance(0.0); }
    /// Lets `seconds` pass, running each task at its time.
    void advance(double seconds);
    bool isIdle() const { return tasks_.empty(); }

private:
    class Repeating;
    using Due = std::pair<double, std::uint64_t>;  // elapsed seconds, then order of posting

    std::map<Due, Task> tasks_;
    std::uint64_t posted_ = 0;
    double elapsed_ = 0.0;
    Instant now_;
};

}  // namespace tessivo
