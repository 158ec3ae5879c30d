#include "Platform/Clock.h"

#include <ctime>

namespace lumo::platform {

double steadySeconds() {
    timespec time{};
    // The standard's steady clock stands still in sleep.
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    constexpr double nanosecond = 1e-9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * nanosecond;
}

} // namespace lumo::platform
