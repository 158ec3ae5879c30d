#include "Platform/ThreadMemory.h"

#include <algorithm>
#include <thread>

#include <malloc.h>

namespace lumo::platform {

void shareAllocator() {
#ifdef M_ARENA_MAX
    // The GNU C library gives eight threads for each core a heap of their own (mallopt(3)), and what a walk's
    // threads leave in theirs is never together what one of them could give back. As many as can run are
    // enough.
    const unsigned cores = std::max(2U, std::thread::hardware_concurrency());
    (void)::mallopt(M_ARENA_MAX, static_cast<int>(cores));
#endif
}

} // namespace lumo::platform
