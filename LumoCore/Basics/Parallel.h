#pragma once

#include <cstddef>
#include <functional>
#include <stop_token>

namespace lumo {

/// Calls `work` for 0 to count - 1, from several threads at once and in no particular order, and returns when
/// all calls are done. Indices not yet begun when a stop is requested are left out.
void parallelFor(std::size_t count, const std::stop_token& stop,
                 const std::function<void(std::size_t)>& work);

} // namespace lumo
