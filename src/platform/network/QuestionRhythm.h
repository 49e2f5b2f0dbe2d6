#pragma once

#include <chrono>
#include <string>

namespace tessivo {

/// When Avahi asks the network for the services of one type: at once when somebody begins to browse
/// for them, then 1, 2, 4, 8 … seconds after each other, up to an hour. All who browse share the
/// questions. They go on until one is due that nobody waits for; who browses after that has them
/// begin anew. Questions that go on for long would miss for as long what came while the network was
/// cut, so whoever browses should let the due one of `pause` pass.
class QuestionRhythm {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// One more browses, by this responder: the questions of an earlier one have ended with it.
    void join(const std::string& responder, Time now);
    /// One less does.
    void leave(Time now);

    /// When nobody may browse, so that the questions begin anew.
    struct Pause {
        Time begin;
        Time end;
    };
    /// The next one to come that isn't too near to be kept, which leaves out the first questions:
    /// they are close enough. Somebody must have joined.
    Pause nextPause(Time now) const;

private:
    /// The first question after that.
    Time questionAfter(Time moment, std::chrono::seconds passed) const;

    std::string responder_;
    int browsing_ = 0;
    Time begin_{};
    Time left_{};  ///< when the last one did
};

}  // namespace tessivo
