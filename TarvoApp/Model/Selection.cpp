#include "TarvoApp/Model/Selection.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "TarvoApp/Model/CleanupPlanning.h"
#include "TarvoApp/Model/Said.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace tarvo {

using lumo::Language;
using lumo::PlanEntry;
using lumo::Safety;

lumo::CleanupOptions windowOptions(const lumo::ScanReport& report, const lumo::CleanupOptions& stored,
                                   std::string_view applicationPath, Language language) {
    lumo::CleanupOptions options = stored;
    for (const lumo::Finding& finding : report.findings) {
        if (finding.safety == Safety::review) {
            options.include.insert(finding.ruleID);
        }
    }
    options.recentProjectHint =
        said(" (los días se cambian en Ajustes)", " (you can change the days in Settings)", language);
    for (const lumo::ProjectReport& project : report.projects) {
        if (lumo::isInside(applicationPath, project.path)) {
            options.excludedProjects.push_back(project.path);
        }
    }
    return options;
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

Selection defaultSelection(const std::vector<PlanEntry>& entries) {
    Selection defaults;
    for (const PlanEntry& entry : entries) {
        if (entry.action.safety == Safety::safe && !entry.skipReason) {
            defaults.insert(entry.action.id);
        }
    }
    return defaults;
}

std::set<std::string> knownIds(const std::vector<PlanEntry>& entries) {
    std::set<std::string> ids;
    for (const PlanEntry& entry : entries) {
        ids.insert(entry.action.id);
    }
    return ids;
}

Selection reconciled(const Selection& selection, const Selection& previousDefaults,
                     const Selection& newDefaults, const std::set<std::string>& known) {
    Selection result;
    std::ranges::set_intersection(selection, known, std::inserter(result, result.end()));
    std::ranges::set_difference(newDefaults, previousDefaults, std::inserter(result, result.end()));
    return result;
}

Selection safeSelection(const Selection& selection, const Selection& defaults, const Phase& phase) {
    return maySelectSafe(phase) ? defaults : selection;
}

std::vector<lumo::CleanupAction> selectedActions(const Selection& selection,
                                                 const std::vector<PlanEntry>& entries) {
    std::vector<lumo::CleanupAction> actions = actionsOf(entries);
    std::erase_if(actions, [&](const lumo::CleanupAction& action) { return !selection.contains(action.id); });
    return actions;
}

CleanupShares selectedShares(const Selection& selection, const std::vector<PlanEntry>& entries) {
    return sharesOf(selectedActions(selection, entries));
}

std::string selectedText(const CleanupShares& shares, Language language) {
    if (shares.total == 0) {
        return said("Nada marcado", "Nothing selected", language);
    }
    const auto bytes = [&](std::int64_t count) { return lumo::ByteFormat::string(count, language); };
    std::string selected = bytes(shares.total) + said(" marcados", " selected", language);
    if (shares.trash > 0) {
        selected += ": " + bytes(shares.total - shares.trash) +
                    said(" se liberan ya · ", " freed now · ", language) + bytes(shares.trash) +
                    said(" se apartan ", " set aside ", language) +
                    std::to_string(lumo::Holding::retentionDays) + said(" días", " days", language);
    }
    return selected;
}

std::string selectSafeHelp(Language language) {
    return said("Vuelve a marcar solo lo que se regenera solo (⇧⌘S)",
                "Select only what recreates itself again (⇧⌘S)", language);
}

std::string deselectAllHelp(Language language) {
    return said("Desmarca todo para elegir uno a uno", "Deselect everything to choose one by one", language);
}

} // namespace tarvo
