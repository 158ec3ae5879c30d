#pragma once

#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Showing/CleanupTexts.h"
#include "TarvoModel/Showing/Phase.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What the user has ticked for the next cleanup: a set of rows' ids. The entries are those of the plan,
/// followed by the line items of inventories, each with its own action.
namespace tarvo {

using Selection = std::set<std::string>;

/// The planner's options where everything that could be cleaned has a row: what needs a look is planned as if
/// it were ticked, and the words speak of a window.
lumo::CleanupOptions windowOptions(const lumo::ScanReport& report, lumo::CleanupOptions options,
                                   lumo::Language language = lumo::currentLanguage());

/// How a window lets the dependencies of recently changed projects be cleaned.
std::string recentProjectHint(lumo::Language language = lumo::currentLanguage());

/// Leaves out the projects that the running program lies in, by its absolute path.
void leaveOutProjectsWith(std::string_view applicationPath, const lumo::ScanReport& report,
                          lumo::CleanupOptions& options);

/// The ids that a plan ticks by itself: what is safe and not held back.
Selection defaultSelection(const std::vector<lumo::PlanEntry>& entries);

/// The selection after a new report: what is gone or held back is dropped, and what the plan ticks now and
/// did not tick before is added. What the user has unticked meanwhile so stays unticked.
Selection reconciled(const Selection& selection, const Selection& previousDefaults,
                     const Selection& newDefaults,
                     const std::function<bool(const std::string& id)>& canSelect);

/// The plan's own ticks; the selection as it is while the phase does not allow that.
Selection safeSelection(const Selection& selection, const Selection& defaults, const Phase& phase);

/// What is selected, for one line: all of it, what is freed at once and what is set aside.
std::string selectedText(const CleanupShares& shares, lumo::Language language = lumo::currentLanguage());

/// What the button does that ticks what is safe.
std::string selectSafeHelp(lumo::Language language = lumo::currentLanguage(),
                           lumo::System system = lumo::currentSystem());

} // namespace tarvo
