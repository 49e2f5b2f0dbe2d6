#include "platform/qt/SystemClock.h"

#include <chrono>

namespace tessivo {

Instant SystemClock::now() const {
    using namespace std::chrono;
    constexpr sys_days epoch = 2001y / January / 1;
    return {duration<double>(system_clock::now() - epoch).count()};
}

}  // namespace tessivo
