#pragma once

#include <functional>
#include <memory>

namespace tessivo {

/// Work on the main thread, in the order in which it was posted. Every long-lived object of the
/// core lives on that thread. Tasks don't throw. An object that may go while its tasks wait posts
/// them through `Turns`.
class MainQueue {
public:
    using Task = std::function<void()>;

    /// A running repetition; destroying it (on the main thread) ends it.
    class Repetition {
    public:
        virtual ~Repetition() = default;
    };

    virtual ~MainQueue() = default;

    /// Runs `task` on a later turn, after everything posted before it. Any thread may call this.
    virtual void post(Task task) = 0;

    /// Runs `task` once, no sooner than `seconds` (0 or more) from now.
    virtual void postAfter(double seconds, Task task) = 0;

    /// Runs `task` every `seconds` (more than 0), first after one interval, until the returned
    /// object is destroyed. A late run doesn't shift the later ones.
    [[nodiscard]] virtual std::unique_ptr<Repetition> repeatEvery(double seconds, Task task) = 0;
};

}  // namespace tessivo
