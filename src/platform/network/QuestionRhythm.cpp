#include "platform/network/QuestionRhythm.h"

#include <algorithm>
#include <cassert>

namespace tessivo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The fifth question comes that long after the first: so the network is asked at least each eight
/// seconds.
constexpr seconds worthEnding{15};

/// What calls to the responder may take, and turns of a busy program.
constexpr milliseconds before{400};
constexpr milliseconds after{1000};
constexpr milliseconds leastBefore{100};

}  // namespace

void QuestionRhythm::join(const std::string& responder, Time now) {
    if (responder_ != responder) {
        responder_ = responder;
        browsing_ = 0;
        begin_ = now;
    } else if (browsing_ == 0 && questionAfter(left_, seconds(0)) <= now) {
        begin_ = now;
    }
    ++browsing_;
}

void QuestionRhythm::leave(Time now) {
    assert(browsing_ > 0);
    --browsing_;
    left_ = now;
}

QuestionRhythm::Pause QuestionRhythm::nextPause(Time now) const {
    assert(!responder_.empty());
    const Time question = questionAfter(now + leastBefore, worthEnding);
    return {question - before, question + after};
}

QuestionRhythm::Time QuestionRhythm::questionAfter(Time moment, seconds passed) const {
    constexpr seconds longest{3600};
    for (seconds pause = passed + seconds(1); begin_ + passed <= moment;) {
        passed += pause;
        pause = std::min(pause * 2, longest);
    }
    return begin_ + passed;
}

}  // namespace tessivo
