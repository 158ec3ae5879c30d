#include "TarvoModel/Flows/CleanupPlanning.h"

#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Inventories/AppStatus.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "Platform/Clock.h"

#include <algorithm>
#include <iterator>

namespace tarvo {

using lumo::CleanupAction;
using lumo::PlanEntry;

namespace {

template <class Value>
Value stored(const Preferences& preferences, std::string_view key) {
    const std::optional<lumo::JsonValue> value = preferences.value(*preferenceKey(key));
    return value ? lumo::decode<Value>(*value).value_or(Value()) : Value();
}

} // namespace

lumo::CleanupOptions storedOptions(const Preferences& preferences) {
    lumo::CleanupOptions options;
    options.activeProjectDays = stored<std::int64_t>(preferences, "diasProyectoActivo");
    options.protectedFolders = stored<std::vector<std::string>>(preferences, "carpetasProtegidas");
    return options;
}

std::vector<PlanEntry>
withSurroundings(const std::string& home,
                 const std::function<std::vector<PlanEntry>(const lumo::PlanSurroundings&)>& plan) {
    const lumo::AppStatus status = lumo::AppStatus::ofThisMachine(home);
    return plan({.now = lumo::platform::now(),
                 .isRunning = [&](const std::string& bundleID) { return status.isRunning(bundleID); },
                 .nameOf = [&](const std::string& bundleID) { return status.name(bundleID); }});
}

std::vector<PlanEntry> planFor(const lumo::ScanReport& report, const lumo::CleanupOptions& options,
                               const std::string& home) {
    return withSurroundings(home, [&](const lumo::PlanSurroundings& surroundings) {
        return lumo::CleanupPlanner::plan(report, options, surroundings);
    });
}

std::vector<PlanEntry> plannedEntries(const lumo::ScanReport& report, const Preferences& preferences,
                                      const std::string& home, std::string_view applicationPath) {
    std::vector<PlanEntry> entries =
        planFor(report, windowOptions(report, storedOptions(preferences), applicationPath), home);
    addRefusals(entries, lumo::PathGuard(home));
    if (const std::optional<std::string> problem = preferences.problem()) {
        // The folders that the user protected are not known now.
        for (PlanEntry& entry : entries) {
            entry.skipReason = problem;
        }
    }
    return entries;
}

std::vector<lumo::Rule> knownRules(const std::string& home) {
    std::vector<lumo::Rule> rules = lumo::RuleCatalog::all();
    std::vector<lumo::Rule> ofApps = lumo::AppCaches::rules(lumo::InstalledApp::scan(home), rules, home);
    rules.insert(rules.end(), ofApps.begin(), ofApps.end());
    return rules;
}

std::vector<CleanupAction> stillAllowed(const std::vector<CleanupAction>& agreed,
                                        const std::vector<PlanEntry>& now) {
    const std::vector<CleanupAction> actions = lumo::CleanupPlanner::actionsOf(now);
    std::vector<CleanupAction> allowed;
    std::ranges::copy_if(agreed, std::back_inserter(allowed), [&](const CleanupAction& action) {
        return std::ranges::find(actions, action) != actions.end();
    });
    return allowed;
}

void addRefusals(std::vector<PlanEntry>& entries, const lumo::PathGuard& guard) {
    for (PlanEntry& entry : entries) {
        if (!entry.skipReason) {
            entry.skipReason = guard.refusal(lumo::CleanupExecutor::touchedPaths(entry.action));
        }
    }
}

} // namespace tarvo
