#pragma once

#include <chrono>

namespace lumo {

/// A moment, to the microsecond, in the years 1 to 9999.
using Timestamp = std::chrono::sys_time<std::chrono::microseconds>;

} // namespace lumo
