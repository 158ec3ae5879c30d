#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "TarvoApp/Model/Preferences.h"

#include <functional>
#include <string>
#include <vector>

/// Plans for this machine at this moment: what every face does before it asks the user.
namespace tarvo {

/// The planner's options as the preferences have them.
lumo::CleanupOptions storedOptions(const Preferences& preferences);

/// Calls the function with what the planner asks about this machine at this moment.
std::vector<lumo::PlanEntry>
withSurroundings(const std::string& home,
                 const std::function<std::vector<lumo::PlanEntry>(const lumo::PlanSurroundings&)>& plan);

/// The plan for a report of that home.
std::vector<lumo::PlanEntry> planFor(const lumo::ScanReport& report, const lumo::CleanupOptions& options,
                                     const std::string& home);

/// What this build knows how to clean in the home: the catalogue, and the caches of installed applications.
std::vector<lumo::Rule> knownRules(const std::string& home);

/// The actions of the entries that nothing speaks against.
std::vector<lumo::CleanupAction> actionsOf(const std::vector<lumo::PlanEntry>& entries);

/// Those of the actions, which the user agreed to, that the plan as it is now still has.
std::vector<lumo::CleanupAction> stillAllowed(const std::vector<lumo::CleanupAction>& agreed,
                                              const std::vector<lumo::PlanEntry>& now);

/// Gives entries without a reason the guard's, where it has one: what is shown is what will be carried out.
void addRefusals(std::vector<lumo::PlanEntry>& entries, const lumo::PathGuard& guard);

} // namespace tarvo
