#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/Cleaning.h"

#include <functional>

namespace tarvo {

/// Runs a cleanup that is watched and ended as it is told to. Shows on standard error which action is in
/// hand. An interrupt ends it after that one, a second one ends the tool that may be running in it.
lumo::Result<Cleaned> watchedCleanup(const std::function<lumo::Result<Cleaned>(const CleanupWatch&)>& clean,
                                     const Invocation& invocation);

} // namespace tarvo
