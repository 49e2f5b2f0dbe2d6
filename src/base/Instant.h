#pragma once

#include <compare>

namespace tessivo {

/// A point in wall-clock time, in seconds since 2001-01-01 00:00:00 UTC. This is also its JSON
/// form, so that instants on the wire need no conversion.
struct Instant {
    double secondsSince2001 = 0.0;

    /// Long before any real time: 0001-01-01 00:00:00 UTC.
    static constexpr Instant distantPast() { return {-63'114'076'800.0}; }

    friend constexpr auto operator<=>(const Instant&, const Instant&) = default;
};

/// Elapsed seconds from `earlier` to `later`; negative when the clock went back.
constexpr double operator-(Instant later, Instant earlier) {
    return later.secondsSince2001 - earlier.secondsSince2001;
}

constexpr Instant operator+(Instant instant, double seconds) {
    return {instant.secondsSince2001 + seconds};
}

}  // namespace tessivo
