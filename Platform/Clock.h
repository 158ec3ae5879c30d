#pragma once

#include "Platform/TreeWalk.h"

namespace lumo::platform {

/// The wall clock.
Timestamp now();

/// Seconds on a clock that is never set; only differences mean anything.
double monotonicSeconds();

} // namespace lumo::platform
