#pragma once

#include "LumoCore/Basics/Timestamp.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumo::platform {

/// The wall clock.
Timestamp now();

/// Seconds on a clock that is never set; only differences mean anything.
double monotonicSeconds();

/// The same on a clock that also goes on while the machine sleeps.
double steadySeconds();

/// A moment on a clock that nobody sets and that starts anew with the machine.
struct BootMoment {
    std::string boot;         ///< Names this run of the machine; another one has another name.
    std::int64_t seconds = 0; ///< Since its start, sleep included.
};

/// This moment; absent where the system does not tell.
std::optional<BootMoment> bootMoment();

} // namespace lumo::platform
