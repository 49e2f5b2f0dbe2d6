#pragma once

#include "base/Signal.h"

#include <string>

namespace tessivo {

class Choices;
class LtcManager;

/// Keeps on this computer what is chosen of how timecode is read: it belongs to the line and the
/// interface at hand, not to a show. Main thread only.
class TimecodeChoices {
public:
    /// Restores what was chosen. What is given here outlives this.
    TimecodeChoices(Choices& choices, LtcManager& manager);

private:
    void keepChannel();
    void restoreChannel();
    /// The name of the selected device; empty without one.
    std::string deviceName() const;

    Choices& choices_;
    LtcManager& manager_;
    Subscription subscription_;
};

}  // namespace tessivo
