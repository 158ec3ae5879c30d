#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Rules/Rule.h"

#include <string>
#include <vector>

/// What somebody pointed at in a folder, to be set aside: nothing that a rule or an inventory offers.
namespace tarvo {

/// The files or folders at absolute paths, as they are measured now, each to be set aside whole. One has a
/// reason against it when it is gone, when a program has to be closed first, when it is one of the user's
/// main folders, and when it is, holds or lies in what a rule keeps.
std::vector<lumo::PlanEntry> chosenEntries(const std::vector<std::string>& paths,
                                           const std::vector<lumo::Rule>& rules,
                                           const lumo::PlanSurroundings& surroundings,
                                           const std::string& home);

} // namespace tarvo
