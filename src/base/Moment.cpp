#include "base/Moment.h"

#include <chrono>
#include <ctime>

Moment Moment::now() {
#ifdef CLOCK_BOOTTIME
    timespec sinceStart{};
    if (clock_gettime(CLOCK_BOOTTIME, &sinceStart) == 0) return {WallClock::now(), sinceStart.tv_sec};
#endif
    const auto steady = std::chrono::steady_clock::now().time_since_epoch();
    return {WallClock::now(), std::chrono::duration_cast<std::chrono::seconds>(steady).count()};
}
