#include "LumoCore/Cleanup/CoveredPlaces.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Inventories/Installers.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <string_view>

namespace lumo {

namespace {

using platform::EntryKind;

bool isOnArtifact(const CleanupAction& action) {
    return action.id.starts_with(artifactIDPrefix);
}

std::vector<std::string> pathsOf(const CleanupAction& action) {
    std::vector<std::string> paths = CleanupExecutor::touchedPaths(action);
    paths.insert(paths.end(), action.measuredPaths.begin(), action.measuredPaths.end());
    paths.insert(paths.end(), action.fallbackContents.begin(), action.fallbackContents.end());
    return paths;
}

/// True when every step from the folder to the path is a real folder, the path itself included.
bool isRealFolderBelow(const std::string& folder, const std::string& path) {
    std::string step = folder;
    for (const std::string_view name : components(std::string_view(path).substr(folder.size()))) {
        step = joined(step, name);
        if (platform::kindOf(step) != EntryKind::folder) {
            return false;
        }
    }
    return true;
}

} // namespace

CoveredPlaces::CoveredPlaces(std::string home, const std::vector<Rule>& rules,
                             const std::vector<CleanupAction>& actions)
    : home_(std::move(home)) {
    const InstallersFinder findInstallers = Installers::finder();
    for (const Rule& rule : rules) {
        const bool isNamed = std::ranges::find(actions, rule.id, &CleanupAction::id) != actions.end();
        if (isNamed && !std::holds_alternative<cleanup::Manual>(rule.cleanup)) {
            std::vector<std::string> found = resolve(rule, home_, findInstallers);
            ofRules_[rule.id].insert(found.begin(), found.end());
        }
    }
    if (std::ranges::any_of(actions, isOnArtifact)) {
        std::vector<std::string> found = Scanner::discoverProjects(home_, Scanner::projectDepth);
        projects_.insert(found.begin(), found.end());
    }
}

bool CoveredPlaces::isArtifact(std::string_view id, const std::string& path) const {
    id.remove_prefix(artifactIDPrefix.size());
    const std::string named = joined(home_, id);
    // A name may be a path within the project, and projects are never nested.
    const auto project = std::ranges::find_if(projects_, [&](const std::string& folder) {
        return named.size() > folder.size() && isInside(named, folder);
    });
    return project != projects_.end() && path != *project && isInside(path, *project) && isSpeltOut(path) &&
           ProjectArtifacts::nameOf(path, *project) == named.substr(project->size() + 1) &&
           isRealFolderBelow(*project, path) && ProjectArtifacts::isArtifact(path, *project);
}

bool CoveredPlaces::covers(const std::string& id, const std::string& path) const {
    const auto rule = ofRules_.find(id);
    return rule != ofRules_.end() ? rule->second.contains(path)
                                  : id.starts_with(artifactIDPrefix) && isArtifact(id, path);
}

std::optional<std::string> CoveredPlaces::refusal(const CleanupAction& action, Language language) const {
    for (const std::string& path : pathsOf(action)) {
        if (!covers(action.id, path) && !platform::isMissing(path)) {
            return Words{"{}: no es un sitio que se limpie con «{}»", "{}: not a place that “{}” cleans"}.in(
                language, path, action.id);
        }
    }
    return std::nullopt;
}

} // namespace lumo
