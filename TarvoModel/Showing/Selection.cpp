#include "TarvoModel/Showing/Selection.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace tarvo {

using lumo::Language;
using lumo::PlanEntry;
using lumo::Safety;

lumo::CleanupOptions windowOptions(const lumo::ScanReport& report, lumo::CleanupOptions options,
                                   Language language) {
    for (const lumo::Finding& finding : report.findings) {
        if (finding.safety == Safety::review) {
            options.include.insert(finding.ruleID);
        }
    }
    options.recentProjectHint = recentProjectHint(language);
    return options;
}

std::string recentProjectHint(lumo::Language language) {
    return lumo::Words{" (los días se cambian en Ajustes)", " (you can change the days in Settings)"}.in(
        language);
}

void leaveOutProjectsWith(std::string_view applicationPath, const lumo::ScanReport& report,
                          lumo::CleanupOptions& options) {
    for (const lumo::ProjectReport& project : report.projects) {
        if (lumo::isInside(applicationPath, project.path)) {
            options.excludedProjects.push_back(project.path);
        }
    }
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

Selection reconciled(const Selection& selection, const Selection& previousDefaults,
                     const Selection& newDefaults,
                     const std::function<bool(const std::string& id)>& canSelect) {
    Selection result;
    std::ranges::copy_if(selection, std::inserter(result, result.end()), canSelect);
    std::ranges::set_difference(newDefaults, previousDefaults, std::inserter(result, result.end()));
    return result;
}

Selection safeSelection(const Selection& selection, const Selection& defaults, const Phase& phase) {
    return maySelectSafe(phase) ? defaults : selection;
}

std::string selectedText(const CleanupShares& shares, Language language) {
    if (shares.total == 0) {
        return lumo::Words{"Nada marcado", "Nothing selected"}.in(language);
    }
    const auto bytes = [&](std::int64_t count) { return lumo::ByteFormat::string(count, language); };
    std::string selected = bytes(shares.total) + lumo::Words{" marcados", " selected"}.in(language);
    if (shares.trash > 0) {
        selected += ": " + bytes(shares.total - shares.trash) +
                    lumo::Words{" se liberan ya · ", " freed now · "}.in(language) + bytes(shares.trash) +
                    lumo::Words{" se apartan ", " set aside "}.in(language) +
                    std::to_string(lumo::Holding::retentionDays) + lumo::Words{" días", " days"}.in(language);
    }
    return selected;
}

std::string selectSafeHelp(Language language, lumo::System system) {
    return lumo::SystemWords{.macos = {"Vuelve a marcar solo lo que se regenera solo (⇧⌘S)",
                                       "Select only what recreates itself again (⇧⌘S)"},
                             .linux = {"Vuelve a marcar solo lo que se regenera solo (Ctrl+Mayús+S)",
                                       "Select only what recreates itself again (Ctrl+Shift+S)"}}
        .on(system)
        .in(language);
}

} // namespace tarvo
