#pragma once

namespace lumo::platform {

/// Makes the calling thread, and the threads that it starts from then on, give way to others of this machine:
/// for long work beside a window. Where the system knows no such thing, nothing happens.
void giveWay();

} // namespace lumo::platform
