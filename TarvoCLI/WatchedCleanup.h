#pragma once

#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "TarvoCLI/Console.h"

#include <vector>

namespace tarvo {

/// Carries the actions out in a batch of their own, under the home's lock, which the caller holds. Shows on
/// standard error which one is in hand. An interrupt ends it after that one, a second one ends the tool that
/// may be running in it. What the refusal has a reason against fails.
std::vector<lumo::CleanupOutcome> watchedCleanup(const std::vector<lumo::CleanupAction>& actions,
                                                 const lumo::PathGuard& guard, const Invocation& invocation,
                                                 const lumo::CleanupExecutor::Refusal& refusal = {});

} // namespace tarvo
