#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "TarvoCLI/Console.h"

#include <string>
#include <vector>

namespace tarvo {

/// A plan for a person to read: what would be cleaned and how, what is left out and why.
std::string planText(const std::vector<lumo::PlanEntry>& entries, const Invocation& invocation);

/// The paths of all that the actions delete at once, one a line: what a file brought is named in full.
std::string deletedPathsText(const std::vector<lumo::CleanupAction>& actions, const Invocation& invocation);

/// A plan for programs.
std::string planJson(const std::vector<lumo::PlanEntry>& entries);

} // namespace tarvo
