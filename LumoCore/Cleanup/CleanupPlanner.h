#pragma once

#include "LumoCore/Rules/CleanupAction.h"
#include "LumoCore/Scanning/ScanReport.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumo {

/// What a plan takes into account besides the report.
struct CleanupOptions {
    std::set<std::string> include;             ///< Review items that the user ticked.
    std::optional<std::set<std::string>> only; ///< When present, nothing else is planned.
    bool includeActiveDependencies = false;    ///< Take dependencies of recently changed projects, too.
    std::int64_t activeProjectDays = 30; ///< A project changed fewer whole days ago than this is active.
    std::optional<std::string>
        recentProjectHint;                     ///< How to include them; absent for the command's own words.
    std::vector<std::string> excludedProjects; ///< Paths of projects whose artifacts are never planned.
    std::vector<std::string> protectedFolders; ///< Absolute; nothing in them, nor what holds one, is cleaned.
};

/// One candidate of a cleanup, known by its action's id.
struct PlanEntry {
    CleanupAction action;
    std::optional<std::string> skipReason; ///< Why it is left out now, in the interface language.

    static constexpr auto fields =
        std::tuple{field("action", &PlanEntry::action), field("skipReason", &PlanEntry::skipReason)};
    friend bool operator==(const PlanEntry&, const PlanEntry&) = default;
};

/// What the planner asks about this machine at this moment.
struct PlanSurroundings {
    Date now = {};
    std::function<bool(const std::string& bundleID)> isRunning;
    std::function<std::string(const std::string& bundleID)> nameOf;
    Language language = currentLanguage();
};

/// Turns a report into candidates of a cleanup: a function of its arguments that reads and changes nothing.
namespace CleanupPlanner {

/// The candidates: first the findings in the report's order, then the projects' artifacts from 1 000 000
/// bytes up.
std::vector<PlanEntry> plan(const ScanReport& report, const CleanupOptions& options,
                            const PlanSurroundings& surroundings);

/// The actions of the entries that nothing speaks against.
std::vector<CleanupAction> actionsOf(const std::vector<PlanEntry>& entries);

/// What these entries free with no risk: the safe ones that nothing holds back.
std::int64_t safeRecoverableBytes(const std::vector<PlanEntry>& entries);

/// What is run for a rule's command line, the program first; absent when a part of it is the user's to
/// choose.
std::optional<std::vector<std::string>> wordsOfCommand(std::string_view line);

/// The reason given while an application, if one is named, must be closed first; absent when it is not open.
std::optional<std::string> openReason(const std::optional<std::string>& closeFirst,
                                      const PlanSurroundings& surroundings);

/// The reason given while a dependency folder belongs to a project that changed lately; absent when it may
/// go.
std::optional<std::string> activeReason(const ProjectReport& project, std::string_view artifactName,
                                        const std::string& id, const CleanupOptions& options,
                                        const PlanSurroundings& surroundings);

/// The reason given for what a protected folder holds back.
std::string protectedReason(Language language = currentLanguage());

/// True when a path is a protected folder, lies in one, or holds one. Compares the texts as they are.
bool touchesProtected(const std::vector<std::string>& paths,
                      const std::vector<std::string>& protectedFolders);

} // namespace CleanupPlanner

} // namespace lumo
