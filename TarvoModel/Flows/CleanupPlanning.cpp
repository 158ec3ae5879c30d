#include "TarvoModel/Flows/CleanupPlanning.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CoveredPlaces.h"
#include "LumoCore/Cleanup/SavedPlan.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Inventories/AppStatus.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Showing/Selection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace tarvo {

using lumo::PlanEntry;
using lumo::Words;

namespace {

lumo::CleanupOptions optionsOf(const PlanRequest& request, const Preferences& preferences, const Desk& desk) {
    lumo::CleanupOptions options;
    options.include = request.include;
    options.only = request.only;
    options.includeActiveDependencies = request.includesActiveDependencies;
    options.recentProjectHint = request.recentProjectHint;
    options.activeProjectDays = request.activeDays.value_or(preferences.value(preference::activeProjectDays));
    options.protectedFolders = request.protectedFolders ? pathsMeant(*request.protectedFolders, desk.home)
                                                        : protectedFolders(preferences, desk.home);
    for (std::string& folder : pathsMeant(request.protectedBesides, desk.home)) {
        options.protectedFolders.push_back(std::move(folder));
    }
    options.excludedProjects = pathsMeant(request.excludedProjects, desk.home);
    if (request.report && request.reviews == Reviews::all) {
        options = windowOptions(*request.report, options);
    }
    if (request.report) {
        // The system names the program by its real path, the report as the home is spelt.
        leaveOutProjectsWith(pathMeant(desk.applicationPath, desk.home), *request.report, options);
    }
    return options;
}

/// What this build knows how to clean in the home: the catalogue, and the caches of installed applications.
std::vector<lumo::Rule> knownRules(const std::string& home) {
    std::vector<lumo::Rule> rules = lumo::RuleCatalog::inHome(home);
    std::vector<lumo::Rule> ofApps = lumo::AppCaches::rules(lumo::InstalledApp::scan(home), rules, home);
    rules.insert(rules.end(), ofApps.begin(), ofApps.end());
    return rules;
}

std::vector<PlanEntry> entriesOf(const PlanRequest& request, const lumo::CleanupOptions& options,
                                 const Desk& desk) {
    const lumo::AppStatus status = lumo::AppStatus::ofThisMachine(desk.home);
    const lumo::PlanSurroundings surroundings{
        .now = desk.now(),
        .isRunning = [&](const std::string& bundleID) { return status.isRunning(bundleID); },
        .nameOf = [&](const std::string& bundleID) { return status.name(bundleID); }};
    return request.saved
               ? lumo::heldBackNow(*request.saved, options, knownRules(desk.home), surroundings, desk.home)
               : lumo::CleanupPlanner::plan(*request.report, options, surroundings);
}

/// The ids that can be asked for: in a saved plan its own, in a report those of all that may be cleaned.
std::set<std::string> askableIDs(const PlanRequest& request) {
    std::set<std::string> ids;
    for (const PlanEntry& entry : request.saved.value_or(std::vector<PlanEntry>())) {
        ids.insert(entry.action.id);
    }
    if (!request.report || request.saved) {
        return ids;
    }
    for (const lumo::Finding& finding : request.report->findings) {
        if (finding.safety != lumo::Safety::keep) {
            ids.insert(finding.ruleID);
        }
    }
    for (const lumo::ProjectReport& project : request.report->projects) {
        for (const lumo::ProjectArtifact& artifact : project.artifacts) {
            ids.insert(lumo::artifactID(project, artifact));
        }
    }
    return ids;
}

bool isInCatalogue(const std::string& id) {
    const std::vector<lumo::Rule> rules = lumo::RuleCatalog::of(lumo::currentSystem());
    const auto rule = std::ranges::find(rules, id, &lumo::Rule::id);
    return rule != rules.end() && rule->safety != lumo::Safety::keep;
}

} // namespace

std::vector<std::string> protectedFolders(const Preferences& preferences, const std::string& home) {
    return pathsMeant(preferences.value(preference::protectedFolders), home);
}

lumo::CleanupExecutor::Refusal refusalFor(const PlanRequest& request,
                                          const std::vector<lumo::CleanupAction>& actions, const Desk& desk) {
    if (!request.saved && !request.isReportFromFile) {
        return {};
    }
    const auto places =
        std::make_shared<const lumo::CoveredPlaces>(desk.home, knownRules(desk.home), actions);
    return [places](const lumo::CleanupAction& action) { return places->refusal(action); };
}

Plan planned(const PlanRequest& request, const Desk& desk) {
    const Preferences preferences = Preferences::load(desk.home);
    const lumo::CleanupOptions options = optionsOf(request, preferences, desk);
    Plan plan{.entries = entriesOf(request, options, desk),
              .protectedFolders = options.protectedFolders,
              .problem = preferences.problem()};
    const lumo::PathGuard guard(desk.home, options.protectedFolders);
    const std::vector<lumo::CleanupAction> actions = lumo::CleanupPlanner::actionsOf(plan.entries);
    const lumo::CleanupExecutor::Refusal refusal = refusalFor(request, actions, desk);
    for (PlanEntry& entry : plan.entries) {
        if (plan.problem) {
            // The folders that the user protected are not known now.
            entry.skipReason = plan.problem;
        } else if (!entry.skipReason) {
            entry.skipReason = guard.protectedRefusal(lumo::CleanupExecutor::touchedPaths(entry.action));
        }
        if (entry.skipReason) {
            continue;
        }
        entry.skipReason = lumo::CleanupExecutor::refusal(entry.action, guard);
        if (!entry.skipReason && refusal) {
            entry.skipReason = refusal(entry.action);
        }
        if (entry.skipReason && refusal) {
            plan.refused.push_back(entry.action);
        }
    }
    plan.shown = lumo::CleanupExecutor::resolved(lumo::CleanupPlanner::actionsOf(plan.entries), guard);
    return plan;
}

std::optional<std::string> preferencesProblem(const Desk& desk) {
    return Preferences::load(desk.home).problem();
}

std::optional<std::string> unknownIDs(const PlanRequest& request) {
    const std::set<std::string> known = askableIDs(request);
    std::set<std::string> asked = request.include;
    asked.merge(std::set<std::string>(request.only.value_or(std::set<std::string>())));
    std::vector<std::string> unknown;
    for (const std::string& id : asked) {
        if (!known.contains(id) && (request.saved || !isInCatalogue(id))) {
            unknown.push_back(lumo::printable(id));
        }
    }
    if (unknown.empty()) {
        return std::nullopt;
    }
    const std::string names = fmt::format("{}", fmt::join(unknown, ", "));
    if (known.empty()) {
        return Words{"no hay nada que se llame {}, ni otra cosa que limpiar",
                     "there is nothing called {}, nor anything else to clean"}
            .with(names);
    }
    std::vector<std::string> there;
    std::ranges::transform(known, std::back_inserter(there), lumo::printable);
    return Words{"no hay nada que se llame {}; hay: {}", "there is nothing called {}; there are: {}"}.with(
        names, fmt::format("{}", fmt::join(there, ", ")));
}

std::int64_t recoverableBytes(const std::shared_ptr<const lumo::ScanReport>& report, const Desk& desk) {
    return lumo::CleanupPlanner::safeRecoverableBytes(planned({.report = report}, desk).entries);
}

lumo::Result<std::vector<PlanEntry>> savedPlan(std::string_view bytes, const Desk& desk) {
    return lumo::savedPlanFromJson(bytes, knownRules(desk.home));
}

lumo::Result<void> checkReport(const lumo::ScanReport& report, const Desk& desk) {
    if (report.home != desk.home) {
        return lumo::failure(Words{"es de la carpeta personal {}", "it is about the home folder {}"}.with(
            lumo::printable(report.home)));
    }
    return lumo::checkCleanups(report, knownRules(desk.home));
}

} // namespace tarvo
