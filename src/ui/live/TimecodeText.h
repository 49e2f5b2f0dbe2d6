#pragma once

#include <QString>

#include "timecode/TimecodeHealth.h"

namespace tessivo {

/// "24", "25", "29,97 DF", "30", …
QString rateText(const TimecodeRate& rate);

/// How the line does, in one line; empty when there is nothing to say.
QString healthText(const TimecodeHealth::Reading& reading);

/// Whether somebody should look at it.
bool isAlarming(const TimecodeHealth::Reading& reading);

}  // namespace tessivo
