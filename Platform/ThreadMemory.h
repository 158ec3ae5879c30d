#pragma once

namespace lumo::platform {

/// Lets the threads of this process share what they allocate from, so that many short-lived ones do not each
/// keep what they have freed. To be called before they are started, from one thread. Where the system's
/// allocator does no such thing, nothing happens.
void shareAllocator();

} // namespace lumo::platform
