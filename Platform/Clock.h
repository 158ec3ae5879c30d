#pragma once

#include "LumoCore/Basics/Timestamp.h"

namespace lumo::platform {

/// The wall clock.
Timestamp now();

/// Seconds on a clock that is never set; only differences mean anything.
double monotonicSeconds();

/// The same on a clock that also goes on while the machine sleeps.
double steadySeconds();

} // namespace lumo::platform
