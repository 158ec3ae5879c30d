#pragma once

#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Plans and reports that come from a file. What a scan or the planner would never have written there is
/// refused as a whole, and a file never brings its own commands: those of the rules are all that is run. The
/// paths are not looked at here: `CoveredPlaces` says which of them may be acted on, and the guard guards
/// them.
namespace lumo {

/// The action of an inventory's item with that id, as it is now; absent when there is none.
using ActionOfItem = std::function<std::optional<CleanupAction>(const std::string& id)>;

/// Reads a plan that was saved as JSON: a list of entries, as `encode` writes them. Fails on malformed JSON,
/// missing fields, estimates that are negative or whose sum does not fit in 64 bits, actions on what is to be
/// kept or with less care than the rule with its id takes, and commands that are not exactly what that rule,
/// or the inventory's item with that id, runs. One id may come twice.
Result<std::vector<PlanEntry>> savedPlanFromJson(std::string_view bytes, const std::vector<Rule>& rules,
                                                 const ActionOfItem& actionOfItem = {});

/// Fails, with the finding's id, unless each finding is freed and judged as the rule with its id says.
/// Instructions to the user are compared by kind alone, since they are in the language of the report.
Result<void> checkCleanups(const ScanReport& report, const std::vector<Rule>& rules);

/// A saved plan with what the planner would say of it now. Left out are entries that `options.only` does not
/// hold, if it is there, and those with a path in an excluded project. An entry that has no reason yet gets
/// one when a path of its touches a protected folder, when its rule's
/// application must be closed first, or when the project that it belongs to in that home changed lately.
std::vector<PlanEntry> heldBackNow(std::vector<PlanEntry> entries, const CleanupOptions& options,
                                   const std::vector<Rule>& rules, const PlanSurroundings& surroundings,
                                   const std::string& home);

} // namespace lumo
