#include "platform/qt/SystemClock.h"

#include <chrono>
#include <ctime>

namespace tessivo {

Instant SystemClock::now() const {
    using namespace std::chrono;
    constexpr sys_days epoch = 2001y / January / 1;
    return {duration<double>(system_clock::now() - epoch).count()};
}

double SystemClock::uptime() const {
    timespec time{};
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

}  // namespace tessivo
