#include "kit/LocalTime.h"

namespace tessivo {
namespace {

constexpr double unixEpochTo2001 = 978'307'200.0;  ///< seconds
constexpr double calendarLimit = 1e11;             ///< seconds, three thousand years

}  // namespace

QDateTime localTime(Instant instant) {
    const double seconds = instant.secondsSince2001 + unixEpochTo2001;
    if (!(seconds > -calendarLimit && seconds < calendarLimit)) {
        return {};
    }
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(seconds * 1000.0));
}

}  // namespace tessivo
