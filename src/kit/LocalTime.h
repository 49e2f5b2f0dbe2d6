#pragma once

#include <QDateTime>

#include "base/Instant.h"

namespace tessivo {

/// The instant by this computer's time zone; invalid for one outside the calendar.
QDateTime localTime(Instant instant);

}  // namespace tessivo
