#include "platform/qt/SystemClock.h"

#include <chrono>
#include <ctime>

namespace tessivo {

Instant SystemClock::now() const {
    using namespace std::chrono;
    constexpr sys_days epoch = 2001y / January / 1;
    return {duration<double>(system_clock::now() - epoch).count()};
}

// Not the library's steady clock, which stands still while the computer sleeps.
Moment SystemClock::moment() const {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return {static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9};
}

}  // namespace tessivo
