#include "Platform/Clock.h"

#include "Platform/StateFile.h"

#include <charconv>
#include <ctime>

namespace lumo::platform {

double steadySeconds() {
    timespec time{};
    // The standard's steady clock stands still in sleep.
    ::clock_gettime(CLOCK_BOOTTIME, &time);
    constexpr double nanosecond = 1e-9;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * nanosecond;
}

std::optional<BootMoment> bootMoment() {
    constexpr std::size_t most = 128;
    const SystemResult<std::string> boot = readWhole("/proc/sys/kernel/random/boot_id", most);
    // A process can be told another time by the functions for it, this one included; the kernel's own count
    // is what such a clock is to be compared with.
    const SystemResult<std::string> uptime = readWhole("/proc/uptime", most);
    BootMoment moment;
    if (!boot || !uptime ||
        std::from_chars(uptime->data(), uptime->data() + uptime->size(), moment.seconds).ec != std::errc()) {
        return std::nullopt;
    }
    moment.boot = boot->substr(0, boot->find('\n'));
    return moment;
}

} // namespace lumo::platform
