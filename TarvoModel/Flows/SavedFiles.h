#pragma once

#include "LumoCore/Basics/Result.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/ScanResult.h"

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Reports and plans in files, the same that the command writes and takes, as a window saves and opens them.
namespace tarvo {

/// A report from a file, with all that a window shows of it.
struct OpenedReport {
    ScanResult result;
    bool isOfOtherHome = false; ///< Then every entry says so, and nothing can be ticked.
    std::string text = {};      ///< Whose it is and of when.
};

/// A plan from a file, with what the planner would say of it now. Both have the amounts of now; what is gone
/// meanwhile says so.
struct OpenedPlan {
    std::vector<lumo::PlanEntry> saved;
    Plan now;
};

using OpenedFile = std::variant<OpenedReport, OpenedPlan>;

/// Reads what was saved there; may be called from any thread. Both pass the checks that a cleanup by the
/// command makes of them: a report that brings its own cleanups, and a plan with what this build would not do
/// by itself, are refused whole. `request` says what the window's own plans take into account.
lumo::Result<OpenedFile> openedFile(const std::string& path, const PlanRequest& request, const Desk& desk);

/// What a cleanup of a saved plan is asked for with, by a window whose own plans are made so.
PlanRequest requestForSaved(std::vector<lumo::PlanEntry> saved, const PlanRequest& request);

/// Writes them, readable for whom the user's mask allows. A failure says why not.
lumo::Result<void> saveReport(const lumo::ScanReport& report, const std::string& path);
lumo::Result<void> savePlan(const std::vector<lumo::CleanupAction>& actions, const std::string& path);

/// What a file with one is called unless the user says otherwise.
std::string reportFileName(lumo::Date now, lumo::Language language = lumo::currentLanguage());
std::string planFileName(lumo::Date now, lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
