#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "TarvoModel/Flows/Preferences.h"
#include "TarvoModel/Showing/Selection.h"

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

/// The plan that a window shows, for this machine at this moment. What the path guard would refuse has its
/// reason; while the preferences cannot be trusted, everything has.
std::vector<lumo::PlanEntry> plannedEntries(const lumo::ScanReport& report, const Preferences& preferences,
                                            const std::string& home, std::string_view applicationPath);

/// What this build knows how to clean in the home: the catalogue, and the caches of installed applications.
std::vector<lumo::Rule> knownRules(const std::string& home);

/// Those of the actions, which the user agreed to, that the plan as it is now still has.
std::vector<lumo::CleanupAction> stillAllowed(const std::vector<lumo::CleanupAction>& agreed,
                                              const std::vector<lumo::PlanEntry>& now);

/// Gives entries without a reason the guard's, where it has one: what is shown is what will be carried out.
void addRefusals(std::vector<lumo::PlanEntry>& entries, const lumo::PathGuard& guard);

} // namespace tarvo
