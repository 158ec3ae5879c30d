#include "Platform/ThreadPriority.h"

#include <sys/resource.h>

namespace lumo::platform {

void giveWay() {
    // Of the calling thread alone: against the standard, threads have priorities of their own here
    // (setpriority(2)), which new threads inherit.
    constexpr int somewhat = 5;
    (void)::setpriority(PRIO_PROCESS, 0, somewhat);
}

} // namespace lumo::platform
