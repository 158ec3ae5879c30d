#include "TarvoModel/Flows/CleanupPlanning.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CoveredPlaces.h"
#include "LumoCore/Cleanup/SavedPlan.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Inventories/AppStatus.h"
#include "LumoCore/Inventories/Inventories.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "TarvoModel/Flows/ChosenPath.h"
#include "TarvoModel/Flows/GivenPath.h"
#include "TarvoModel/Showing/Selection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>

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
        // The system names the program by its real path, the report as the home is spelled.
        leaveOutProjectsWith(pathMeant(desk.applicationPath, desk.home), *request.report, options);
    }
    return options;
}

/// What this build knows how to clean in the home: the catalog, and the caches of installed applications.
std::vector<lumo::Rule> knownRules(const Desk& desk) {
    std::vector<lumo::Rule> rules = lumo::RuleCatalog::inHome(desk.home);
    std::vector<lumo::Rule> ofApps = lumo::AppCaches::rules(desk.installedApps()->apps(), rules,
                                                            lumo::HomePlaces::ofThisMachine(desk.home));
    rules.insert(rules.end(), ofApps.begin(), ofApps.end());
    return rules;
}

std::vector<PlanEntry> entriesOf(const PlanRequest& request, const lumo::CleanupOptions& options,
                                 const Desk& desk) {
    const lumo::AppStatus status = lumo::AppStatus::ofThisMachine(*desk.installedApps());
    const lumo::PlanSurroundings surroundings{
        .now = desk.now(),
        .isRunning = [&](const std::string& bundleID) { return status.isRunning(bundleID); },
        .nameOf = [&](const std::string& bundleID) { return status.name(bundleID); }};
    if (request.saved) {
        return lumo::heldBackNow(*request.saved, options, knownRules(desk), surroundings, desk.home);
    }
    std::vector<PlanEntry> entries = request.report
                                         ? lumo::CleanupPlanner::plan(*request.report, options, surroundings)
                                         : std::vector<PlanEntry>();
    if (!request.chosen.empty()) {
        std::ranges::move(chosenEntries(request.chosen, knownRules(desk), surroundings, desk.home),
                          std::back_inserter(entries));
    }
    return entries;
}

lumo::InventoryQuery queryAt(const Desk& desk) {
    return {.home = desk.home, .now = desk.now()};
}

/// Adds the items that were asked for, as they are now when they go together, each once.
void addItems(const PlanRequest& request, const Desk& desk, Plan& plan) {
    const auto isPlanned = [&](const std::string& id) {
        return std::ranges::any_of(plan.entries,
                                   [&](const PlanEntry& entry) { return entry.action.id == id; });
    };
    std::vector<std::string> asked = request.items;
    std::erase_if(asked, isPlanned);
    std::set<std::string_view> there;
    std::vector<lumo::DetailItem> items = lumo::Inventories::itemsWith(asked, queryAt(desk));
    std::ranges::transform(items, std::inserter(there, there.end()), &lumo::DetailItem::id);
    std::ranges::copy_if(asked, std::back_inserter(plan.unknownItems), [&](const std::string& id) {
        return !there.contains(id) && std::ranges::find(plan.unknownItems, id) == plan.unknownItems.end();
    });
    for (lumo::DetailItem& item : items) {
        plan.entries.push_back({std::move(item.action), std::move(item.blockedBecause)});
    }
}

/// Nothing is planned that would take the copy which stays when another entry's goes.
void holdBackKeptCopies(std::vector<PlanEntry>& entries, const std::string& home) {
    std::vector<std::string> kept;
    for (const PlanEntry& entry : entries) {
        if (auto path = lumo::Inventories::keptBy(entry.action.id, home)) {
            kept.push_back(std::move(*path));
        }
    }
    for (PlanEntry& entry : entries) {
        const std::vector<std::string> paths = lumo::CleanupExecutor::touchedPaths(entry.action);
        const bool holdsOne = std::ranges::any_of(kept, [&](const std::string& copy) {
            return std::ranges::any_of(paths,
                                       [&](const std::string& path) { return lumo::isInside(copy, path); });
        });
        if (holdsOne && !entry.skipReason) {
            entry.skipReason =
                Words{"es la copia que se queda de un duplicado", "it is the copy of a duplicate that stays"}
                    .in();
        }
    }
}

/// True when the inventory has the action among the items of those ids, as they are now when they go
/// together.
bool isItemNow(const lumo::CleanupAction& action, const std::vector<std::string>& ids, const Desk& desk) {
    const std::vector<lumo::DetailItem> items = lumo::Inventories::itemsWith(ids, queryAt(desk));
    return std::ranges::any_of(items, [&](const lumo::DetailItem& item) {
        return item.id == action.id && item.action.method == action.method &&
               item.action.safety == action.safety && item.action.measuredPaths == action.measuredPaths &&
               item.action.fallbackContents == action.fallbackContents;
    });
}

/// What a file holds that this build would not do by itself, or would do otherwise by now: it may name an
/// item, but what is done to that is what the inventory says.
lumo::CleanupExecutor::Refusal
refusalOfFile(const PlanRequest& request, const std::vector<lumo::CleanupAction>& actions, const Desk& desk) {
    if (!isFromFile(request)) {
        return {};
    }
    std::vector<std::string> ids;
    std::ranges::transform(actions, std::back_inserter(ids), &lumo::CleanupAction::id);
    const auto places = std::make_shared<const lumo::CoveredPlaces>(desk.home, knownRules(desk), actions);
    return [places, ids, isPlan = request.saved.has_value(),
            desk](const lumo::CleanupAction& action) -> std::optional<std::string> {
        if (!lumo::inventoryKindOfID(action.id)) {
            return places->refusal(action);
        }
        // Few items depend on what goes with them, so that one is mostly looked at alone.
        if (!isPlan || isItemNow(action, {action.id}, desk) || isItemNow(action, ids, desk)) {
            return std::nullopt;
        }
        return Words{"ya no es lo que dice el fichero: búscalo otra vez",
                     "it is no longer what the file says: look for it again"}
            .in();
    };
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

bool isFromFile(const PlanRequest& request) {
    return request.saved || request.isReportFromFile;
}

std::vector<std::string> protectedFolders(const Preferences& preferences, const std::string& home) {
    return pathsMeant(preferences.value(preference::protectedFolders), home);
}

lumo::CleanupExecutor::Refusal refusalFor(const PlanRequest& request,
                                          const std::vector<lumo::CleanupAction>& actions, const Desk& desk) {
    return [ofFile = refusalOfFile(request, actions, desk), desk](const lumo::CleanupAction& action) {
        const auto refused = ofFile ? ofFile(action) : std::nullopt;
        return refused ? refused : lumo::Inventories::refusal(action, queryAt(desk));
    };
}

lumo::CleanupExecutor::Regret regretFor(const Desk& desk) {
    return [desk](const lumo::CleanupAction& action, const std::vector<lumo::TrashedItem>& held) {
        std::vector<std::string> paths;
        std::ranges::transform(held, std::back_inserter(paths), &lumo::TrashedItem::inTrash);
        return lumo::Inventories::regret(action, paths, queryAt(desk));
    };
}

Plan planned(const PlanRequest& request, const Desk& desk) {
    const Preferences preferences = Preferences::load(desk.home);
    const lumo::CleanupOptions options = optionsOf(request, preferences, desk);
    Plan plan{.entries = entriesOf(request, options, desk),
              .protectedFolders = options.protectedFolders,
              .problem = preferences.problem()};
    addItems(request, desk, plan);
    holdBackKeptCopies(plan.entries, desk.home);
    const lumo::PathGuard guard(desk.home, options.protectedFolders);
    const std::vector<lumo::CleanupAction> actions = lumo::CleanupPlanner::actionsOf(plan.entries);
    // What was planned here is covered, and what it rests on is looked at right before each is carried out.
    const lumo::CleanupExecutor::Refusal refusal = refusalOfFile(request, actions, desk);
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

std::string unknownItemsText(const std::vector<std::string>& ids) {
    std::vector<std::string> shown;
    std::ranges::transform(ids, std::back_inserter(shown), lumo::printable);
    return Words{"no hay ahora nada que se llame {}; tarvo buscar dice qué hay",
                 "there is nothing called {} now; tarvo find tells what there is"}
        .with(fmt::format("{}", fmt::join(shown, ", ")));
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

namespace {

/// What a file that was never written by Tarvo AI, or was cut, is told of. What is wrong with it is no news
/// for whoever wanted to use it.
std::unexpected<lumo::Failure> damaged() {
    return lumo::failure(Words{"está dañado o no es un informe ni un plan que guardara Tarvo AI",
                               "it is damaged, or neither a report nor a plan that Tarvo AI saved"}
                             .in());
}

/// Why a file is refused although it can be read.
std::unexpected<lumo::Failure> foreign() {
    return lumo::failure(
        Words{"pide limpiezas que este programa no haría por sí mismo, así que no se usa nada de él",
              "it asks for cleanups that this program would not do by itself, so nothing of it is used"}
            .in());
}

/// What stands at the measured paths now.
lumo::Usage measuredNow(const lumo::CleanupAction& action) {
    std::vector<std::string_view> paths(action.measuredPaths.begin(), action.measuredPaths.end());
    // What is gone would count as something that cannot be read.
    std::erase_if(paths, [](std::string_view path) { return lumo::platform::isMissing(std::string(path)); });
    lumo::HardLinkRegistry registry;
    lumo::Usage all;
    for (const lumo::Usage& usage : lumo::FileTree::measureAll(paths, registry)) {
        all += usage;
    }
    return all;
}

} // namespace

lumo::Result<std::vector<PlanEntry>> savedPlan(std::string_view bytes, const Desk& desk) {
    auto saved = lumo::savedPlanFromJson(bytes, knownRules(desk), [&](const std::string& id) {
        const auto item = lumo::Inventories::itemWith(id, queryAt(desk));
        return item ? std::optional(item->action) : std::nullopt;
    });
    if (!saved) {
        return lumo::decodeJson<std::vector<PlanEntry>>(bytes) ? foreign() : damaged();
    }
    return saved;
}

lumo::Result<lumo::ScanReport> savedReport(std::string_view bytes) {
    auto report = lumo::scanReportFromJson(bytes);
    return report ? std::move(report) : damaged();
}

lumo::Result<void> checkReport(const lumo::ScanReport& report, const Desk& desk) {
    if (report.home != desk.home) {
        return lumo::failure(Words{"es de la carpeta personal {}", "it is about the home folder {}"}.with(
            lumo::printable(report.home)));
    }
    const auto checked = lumo::checkCleanups(report, knownRules(desk));
    return checked ? lumo::Result<void>() : foreign();
}

void measureNow(Plan& plan, std::vector<PlanEntry>& saved, const VisitMeasured& visit) {
    for (PlanEntry& entry : plan.entries) {
        if (entry.skipReason || entry.action.measuredPaths.empty()) {
            continue;
        }
        const auto known = std::ranges::find(saved, entry);
        const lumo::Usage now = measuredNow(entry.action);
        entry.action.estimatedBytes = now.allocatedBytes;
        if (visit) {
            visit(entry, now);
        }
        if (known != saved.end()) {
            *known = entry;
        }
    }
}

} // namespace tarvo
