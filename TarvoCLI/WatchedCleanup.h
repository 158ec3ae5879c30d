#pragma once

#include "TarvoCLI/Console.h"
#include "TarvoModel/Flows/Cleaning.h"

#include <vector>

namespace tarvo {

/// Carries out what was agreed to. Shows on standard error which action is in hand. An interrupt ends it
/// after that one, a second one ends the tool that may be running in it.
lumo::Result<Cleaned> watchedCleanup(const PlanRequest& request, const Agreement& agreed, const Desk& desk,
                                     const Invocation& invocation);

} // namespace tarvo
