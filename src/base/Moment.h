#pragma once

#include <compare>
#include <limits>

namespace tessivo {

/// A point in time on a clock that nobody can set, in seconds: for how long ago something was. It
/// means nothing outside this run of the program.
struct Moment {
    double seconds = 0.0;

    /// Longer ago than anything.
    static constexpr Moment distantPast() { return {-std::numeric_limits<double>::infinity()}; }

    friend constexpr auto operator<=>(const Moment&, const Moment&) = default;
};

/// Elapsed seconds from `earlier` to `later`.
constexpr double operator-(Moment later, Moment earlier) {
    return later.seconds - earlier.seconds;
}

constexpr Moment operator+(Moment moment, double seconds) {
    return {moment.seconds + seconds};
}

}  // namespace tessivo
