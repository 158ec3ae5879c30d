#pragma once

#include "LumoCore/Basics/Result.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Rules/Rule.h"
#include "TarvoModel/Flows/Desk.h"
#include "TarvoModel/Flows/Preferences.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Plans of a cleanup for this machine at this moment: what every face shows before it asks, and what is made
/// again under the home's lock before anything is done.
namespace tarvo {

/// Which of the items that need a look are planned.
enum class Reviews {
    asked, ///< Those that were asked for.
    all,   ///< All, where each has a row that can be ticked.
};

/// What a cleanup may take, as somebody asked for it. Where it is silent the preferences hold.
struct PlanRequest {
    /// What is planned from: a report of the desk's home, never null unless there is a saved plan or nothing
    /// but items and chosen paths is asked for.
    std::shared_ptr<const lumo::ScanReport> report;
    std::optional<std::vector<lumo::PlanEntry>> saved = {}; ///< Planned already, in a file.
    bool isReportFromFile = false;
    Reviews reviews = Reviews::asked;
    std::set<std::string> include = {};
    std::optional<std::set<std::string>> only = {};
    /// Ids of what the inventories find (see `found`), planned after everything else. Each is looked at now.
    std::vector<std::string> items = {};
    /// Absolute paths in the home that somebody pointed at: each is set aside whole (see `chosenEntries`).
    std::vector<std::string> chosen = {};
    bool includesActiveDependencies = false;
    /// How the asker would include them, in the asker's own words; absent for the command's.
    std::optional<std::string> recentProjectHint = {};
    std::optional<std::int64_t> activeDays = {};
    /// As somebody wrote them.
    std::optional<std::vector<std::string>> protectedFolders = {};
    /// Besides those: what the asker protects and may not have stored yet.
    std::vector<std::string> protectedBesides = {};
    std::vector<std::string> excludedProjects = {};
};

/// True when what is planned was in a file.
bool isFromFile(const PlanRequest& request);

/// A plan made for one moment.
struct Plan {
    /// What the path guard would refuse has its reason; while `problem` stands, everything has that.
    std::vector<lumo::PlanEntry> entries;
    /// Of a file: what it names beyond what this build would touch by itself. Carried out, it fails
    /// untouched.
    std::vector<lumo::CleanupAction> refused = {};
    std::vector<std::string> protectedFolders = {}; ///< By which it was made.
    lumo::ResolvedPaths shown = {};                 ///< What the paths of the entries mean now.
    std::optional<std::string> problem = {};        ///< Why the preferences cannot be trusted now.
    std::vector<std::string> unknownItems = {};     ///< Of the request's, those that nothing is known by now.
};

/// Reads the preferences, looks at what runs, and plans. Changes nothing; may be called from any thread.
Plan planned(const PlanRequest& request, const Desk& desk);

/// The folders that the user protected, as they are meant in the home.
std::vector<std::string> protectedFolders(const Preferences& preferences, const std::string& home);

/// Why the preferences cannot be trusted now, and so nothing may be cleaned; absent when all is well.
std::optional<std::string> preferencesProblem(const Desk& desk);

/// Why an action may not be carried out right now: a file's, when this build would not act there by itself,
/// and an inventory's, when what it rests on no longer holds.
lumo::CleanupExecutor::Refusal refusalFor(const PlanRequest& request,
                                          const std::vector<lumo::CleanupAction>& actions, const Desk& desk);

/// Why what an action on an inventory's item has just set aside goes back.
lumo::CleanupExecutor::Regret regretFor(const Desk& desk);

/// Says that no inventory finds these items now.
std::string unknownItemsText(const std::vector<std::string>& ids);

/// Says which ids of the request are nobody's and which there are; absent when it knows all. What the
/// catalog knows and this home has not is no mistake.
std::optional<std::string> unknownIDs(const PlanRequest& request);

/// What can be recovered now with no risk, by the one number that every face gives: what a cleanup frees
/// without any more being asked for.
std::int64_t recoverableBytes(const std::shared_ptr<const lumo::ScanReport>& report, const Desk& desk);

/// Reads a saved plan or report, and checks what a report brings. A failure says as the end of a sentence why
/// nothing of the file is used: it is damaged, of another home, or asks for what no planner would have
/// written.
lumo::Result<std::vector<lumo::PlanEntry>> savedPlan(std::string_view bytes, const Desk& desk);
lumo::Result<lumo::ScanReport> savedReport(std::string_view bytes);
lumo::Result<void> checkReport(const lumo::ScanReport& report, const Desk& desk);

/// Gives what the plan of a saved one would do the amounts of now, there and in the saved entries: those of
/// then would promise what is gone. Only what passed the checks is measured; `visit` sees it then, and may
/// leave it out.
using VisitMeasured = std::function<void(lumo::PlanEntry& entry, const lumo::Usage& now)>;
void measureNow(Plan& plan, std::vector<lumo::PlanEntry>& saved, const VisitMeasured& visit = {});

} // namespace tarvo
