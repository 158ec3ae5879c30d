#include "LumoCore/Cleanup/CleanupPlanner.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <cerrno>

namespace lumo::CleanupPlanner {

namespace {

/// How a finding can be freed, or why that is left to the user.
struct Way {
    std::optional<Method> method;
    std::string reason;
};

Way wayOf(const Finding& finding, Language language) {
    struct Choose {
        const Finding& finding;
        Language language;

        Way operator()(const cleanup::DeleteItems&) const { return {method::TrashItems{finding.paths}, {}}; }
        Way operator()(const cleanup::DeleteContents&) const {
            return {method::TrashContents{finding.paths}, {}};
        }
        Way operator()(const cleanup::Command& how) const {
            if (auto words = wordsOfCommand(how.line)) {
                return {method::Command{std::move(*words)}, {}};
            }
            return {std::nullopt,
                    Words{"hay que elegir a mano: ", "you have to choose by hand: "}.in(language) + how.line};
        }
        Way operator()(const cleanup::Manual& how) const {
            return {std::nullopt, Words{"a mano: ", "by hand: "}.in(language) + how.instruction};
        }
    };
    return std::visit(Choose{finding, language}, finding.cleanup);
}

bool isAdmitted(const Finding& finding, const CleanupOptions& options) {
    if (finding.safety == Safety::keep) {
        return false;
    }
    if (options.only) {
        return options.only->contains(finding.ruleID);
    }
    return finding.safety == Safety::safe || options.include.contains(finding.ruleID);
}

PlanEntry entryFor(const Finding& finding, const CleanupOptions& options,
                   const PlanSurroundings& surroundings) {
    const Language language = surroundings.language;
    Way way = wayOf(finding, language);
    PlanEntry entry;
    if (!way.method) {
        entry.skipReason = std::move(way.reason);
    } else {
        entry.skipReason = openReason(finding.closeFirst, surroundings);
    }
    if (touchesProtected(finding.paths, options.protectedFolders)) {
        entry.skipReason = protectedReason(language);
    }
    entry.action = {.id = finding.ruleID,
                    .title = finding.name,
                    .safety = finding.safety,
                    .estimatedBytes = finding.usage.allocatedBytes,
                    .method = way.method.value_or(method::TrashItems{}),
                    .measuredPaths = finding.paths,
                    .fallbackContents = {}};
    if (finding.safety == Safety::safe) {
        entry.action.fallbackContents = finding.paths;
    }
    return entry;
}

bool isDependency(std::string_view name) {
    return name == "node_modules" || name == ".venv" || name == "venv";
}

/// Whole days since the project's own files last changed; absent when it has none.
std::optional<std::int64_t> ageInDays(const ProjectReport& project, Date now) {
    if (!project.lastCodeChange) {
        return std::nullopt;
    }
    // A clock that was set back, or a file from elsewhere, may lie ahead of now: then it changed today.
    return std::max<std::int64_t>(
        std::chrono::duration_cast<std::chrono::days>(now - *project.lastCodeChange).count(), 0);
}

std::string recentText(std::int64_t days, const CleanupOptions& options, Language language) {
    std::string when = Words{"hace {} días", "{} days ago"}.in(language, days);
    if (days == 0) {
        when = Words{"hoy", "today"}.in(language);
    } else if (days == 1) {
        when = Words{"ayer", "yesterday"}.in(language);
    }
    const std::string hint = options.recentProjectHint.value_or(
        Words{" (inclúyelo con --dependencias)", " (include it with --dependencies)"}.in(language));
    return Words{"proyecto con cambios {}, no se incluye solo",
                 "project changed {}, so it isn't included by default"}
               .in(language, when) +
           hint;
}

std::optional<PlanEntry> entryFor(const ProjectReport& project, const ProjectArtifact& artifact,
                                  const CleanupOptions& options, const PlanSurroundings& surroundings) {
    constexpr std::int64_t smallest = 1000000;
    const std::string id = artifactID(project, artifact);
    if (artifact.usage.allocatedBytes < smallest || (options.only && !options.only->contains(id))) {
        return std::nullopt;
    }
    PlanEntry entry;
    entry.skipReason = activeReason(project, artifact.name, id, options, surroundings);
    if (touchesProtected(artifact.paths, options.protectedFolders)) {
        entry.skipReason = protectedReason(surroundings.language);
    }
    entry.action = {.id = id,
                    .title = project.name + " · " + artifact.name,
                    .safety = Safety::safe,
                    .estimatedBytes = artifact.usage.allocatedBytes,
                    .method = method::TrashItems{artifact.paths},
                    .measuredPaths = artifact.paths,
                    .fallbackContents = {}};
    return entry;
}

} // namespace

std::vector<PlanEntry> plan(const ScanReport& report, const CleanupOptions& options,
                            const PlanSurroundings& surroundings) {
    std::vector<PlanEntry> entries;
    for (const Finding& finding : report.findings) {
        if (isAdmitted(finding, options)) {
            entries.push_back(entryFor(finding, options, surroundings));
        }
    }
    for (const ProjectReport& project : report.projects) {
        if (std::ranges::find(options.excludedProjects, project.path) != options.excludedProjects.end()) {
            continue;
        }
        for (const ProjectArtifact& artifact : project.artifacts) {
            if (auto entry = entryFor(project, artifact, options, surroundings)) {
                entries.push_back(std::move(*entry));
            }
        }
    }
    return entries;
}

std::vector<CleanupAction> actionsOf(const std::vector<PlanEntry>& entries) {
    std::vector<CleanupAction> actions;
    for (const PlanEntry& entry : entries) {
        if (!entry.skipReason) {
            actions.push_back(entry.action);
        }
    }
    return actions;
}

std::int64_t safeRecoverableBytes(const std::vector<PlanEntry>& entries) {
    std::int64_t bytes = 0;
    for (const PlanEntry& entry : entries) {
        if (entry.action.safety == Safety::safe && !entry.skipReason) {
            bytes = checkedSum(bytes, entry.action.estimatedBytes);
        }
    }
    return bytes;
}

std::optional<std::vector<std::string>> wordsOfCommand(std::string_view line) {
    // "<...>" stands for something that only the user can name.
    if (line.find('<') != std::string_view::npos) {
        return std::nullopt;
    }
    std::vector<std::string> words;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        if (end > 0) {
            words.emplace_back(line.substr(0, end));
        }
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return words;
}

std::optional<std::string> openReason(const std::optional<std::string>& closeFirst,
                                      const PlanSurroundings& surroundings) {
    if (!closeFirst || !surroundings.isRunning(*closeFirst)) {
        return std::nullopt;
    }
    return Words{"cierra {} antes", "quit {} first"}.in(surroundings.language,
                                                        surroundings.nameOf(*closeFirst));
}

std::optional<std::string> activeReason(const ProjectReport& project, std::string_view artifactName,
                                        const std::string& id, const CleanupOptions& options,
                                        const PlanSurroundings& surroundings) {
    const std::optional<std::int64_t> days = ageInDays(project, surroundings.now);
    const bool isHeldBack = isDependency(artifactName) && !options.includeActiveDependencies && days &&
                            !options.include.contains(id) && *days < options.activeProjectDays;
    return isHeldBack ? std::optional(recentText(*days, options, surroundings.language)) : std::nullopt;
}

std::string protectedReason(Language language) {
    // The remover meets such folders, too, and can say no more than a system's reason.
    return reasonText(platform::SystemError{ECANCELED}, language);
}

bool touchesProtected(const std::vector<std::string>& paths,
                      const std::vector<std::string>& protectedFolders) {
    return std::ranges::any_of(paths, [&](const std::string& path) {
        return std::ranges::any_of(protectedFolders, [&](const std::string& folder) {
            return isInside(path, folder) || isInside(folder, path);
        });
    });
}

} // namespace lumo::CleanupPlanner
