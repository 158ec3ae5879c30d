#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
#include "LumoCore/Scanning/ProjectMarkers.h"
#include "LumoCore/Scanning/Scanner.h"
#include "Platform/Folder.h"

#include <algorithm>
#include <array>
#include <map>

// Discovering and measuring developer projects.
namespace lumo::Scanner {

namespace {

using platform::EntryKind;

/// A folder that may be a project or hold some.
struct Visited {
    std::string path;
    std::optional<platform::FolderStatus> above = {}; ///< Of the folder that lists it, where it is known.
    bool isRoot = false;
};

/// What a look into a folder tells.
struct Look {
    bool isProject = false;
    bool isRepository = false; ///< A project that somebody keeps the history of.
    std::vector<Visited> below;
};

/// Where the projects of others lie unpacked: applications, and what package managers bring.
bool holdsWorkOfOthers(std::string_view name, std::string_view nameAbove) {
    return ProjectArtifacts::isRegenerable(name) || name == "site-packages" ||
           (name == "app" && nameAbove == "resources") || (name == "mod" && nameAbove == "pkg");
}

/// A volume of its own may be mounted as a whole folder of the home; below that no other is entered, and a
/// part of the home's own volume that is mounted in it is counted where it lies.
bool isMountedElsewhere(const Visited& folder, const platform::FolderStatus& status) {
    if (!folder.above || status.isOnMountOf(*folder.above)) {
        return false;
    }
    return !folder.isRoot || status.device == folder.above->device;
}

Look lookInto(const Visited& folder, const std::stop_token& stop) {
    Look look;
    const auto status = platform::visitFolder(folder.path, [&](std::string_view name, EntryKind kind) {
        look.isRepository = name == ".git";
        look.isProject = look.isProject || marksProject(name);
        if (!look.isProject && kind == EntryKind::folder && !name.starts_with('.') &&
            !holdsWorkOfOthers(name, fileName(folder.path))) {
            look.below.push_back({joined(folder.path, name)});
        }
        return !look.isRepository && !stop.stop_requested();
    });
    if (!status || isMountedElsewhere(folder, *status)) {
        return {};
    }
    for (Visited& below : look.below) {
        below.above = status;
    }
    return look;
}

/// Takes out the folders that are programs unpacked, as such or in one: a compiled program stands in the
/// folder, or in a folder above it within the home.
void leaveOutPrograms(std::vector<std::string>& folders, const std::string& home,
                      const std::stop_token& stop) {
    std::map<std::string, bool, std::less<>> holdsProgram;
    for (const std::string& folder : folders) {
        for (std::string_view above = folder; above.size() > home.size(); above = parentOf(above)) {
            holdsProgram.emplace(above, false);
        }
    }
    std::vector<decltype(holdsProgram)::iterator> all;
    for (auto one = holdsProgram.begin(); one != holdsProgram.end(); ++one) {
        all.push_back(one);
    }
    parallelFor(all.size(), stop, [&](std::size_t index) {
        all[index]->second = platform::holdsCompiledProgram(all[index]->first);
    });
    std::erase_if(folders, [&](std::string_view folder) {
        while (folder.size() > home.size() && !holdsProgram.find(folder)->second) {
            folder = parentOf(folder);
        }
        return folder.size() > home.size();
    });
}

ProjectTrace traceIn(const std::string& folder, const std::string& home) {
    const Look look = lookInto({folder}, {});
    if (!look.isProject) {
        return ProjectTrace::none;
    }
    std::vector<std::string> projects{folder};
    if (!look.isRepository) {
        leaveOutPrograms(projects, home, {});
    }
    return projects.empty() ? ProjectTrace::unpacked : ProjectTrace::project;
}

constexpr std::string_view agentProjectsInHome = ".minimax-agent/projects";

/// True when projects are looked for in a folder of the home with that name.
bool isRootName(std::string_view name) {
    constexpr std::array<std::string_view, 6> elsewhere{"Library", "Applications", "Pictures",
                                                        "Music",   "Movies",       "Public"};
    return !name.starts_with('.') && std::ranges::find(elsewhere, name) == elsewhere.end() &&
           !holdsWorkOfOthers(name, {});
}

std::vector<Visited> projectRoots(const std::string& home) {
    const auto homeStatus = platform::visitFolder(home, [](std::string_view, EntryKind) { return false; });
    std::vector<Visited> roots;
    for (const std::string& path : children(home)) {
        if (isRootName(fileName(path)) && platform::kindOf(path) == EntryKind::folder) {
            roots.push_back({path, homeStatus, true});
        }
    }
    std::string agentProjects = joined(home, agentProjectsInHome);
    if (platform::kindOf(agentProjects)) {
        roots.push_back({std::move(agentProjects), homeStatus, true});
    }
    return roots;
}

/// Adds a project's measured parts to it, one artifact for each name.
void addArtifacts(ProjectReport& project, std::vector<std::pair<std::string, Usage>> measured) {
    std::map<std::string, ProjectArtifact, std::less<>> byName;
    for (auto& [path, usage] : measured) {
        const std::string name = ProjectArtifacts::nameOf(path, project.path);
        ProjectArtifact& artifact = byName[name];
        artifact.name = name;
        artifact.paths.push_back(std::move(path));
        artifact.usage += usage;
        project.usage += usage;
    }
    for (auto& [name, artifact] : byName) {
        artifact.hint = ProjectArtifacts::hint(name);
        project.artifacts.push_back(std::move(artifact));
    }
    sortLargestFirst(project.artifacts);
}

/// How the project is walked.
platform::TreePolicy policyFor(const std::string& project, const std::stop_token& stop) {
    const bool hasTargets = ProjectArtifacts::hasTargets(project);
    return {.setsAside =
                [hasTargets](std::string_view name) {
                    return ProjectArtifacts::isRegenerable(name) || (hasTargets && name == "target");
                },
            .walksAllTheSame =
                [](const std::string& path) {
                    return fileName(path) == "target" && ProjectArtifacts::isSourceFolder(path);
                },
            .furtherAside = ProjectArtifacts::tellingFolders(project, stop),
            .undatedFiles = {".DS_Store"},
            .undatedFolders = {".git"}};
}

} // namespace

std::vector<std::string> discoverProjects(const std::string& home, int maxDepth,
                                          const std::stop_token& stop) {
    std::vector<std::string> projects;
    std::vector<std::string> withoutHistory;
    std::vector<Visited> level = projectRoots(home);
    // Level by level, because the folders of one level can be looked into all at once.
    for (int depth = 0; depth <= maxDepth && !level.empty(); ++depth) {
        std::vector<Look> looks(level.size());
        parallelFor(level.size(), stop,
                    [&](std::size_t index) { looks[index] = lookInto(level[index], stop); });
        std::vector<Visited> below;
        for (std::size_t index = 0; index < level.size(); ++index) {
            if (looks[index].isProject) {
                (looks[index].isRepository ? projects : withoutHistory)
                    .push_back(std::move(level[index].path));
            } else {
                std::ranges::move(looks[index].below, std::back_inserter(below));
            }
        }
        level = std::move(below);
    }
    leaveOutPrograms(withoutHistory, home, stop);
    std::ranges::move(withoutHistory, std::back_inserter(projects));
    std::ranges::sort(projects);
    return projects;
}

std::optional<std::string> projectAbove(const std::string& path, const std::string& home, SeenFolders& seen) {
    if (path.size() <= home.size() || !isInside(path, home)) {
        return std::nullopt;
    }
    const std::string agentProjects = joined(home, agentProjectsInHome);
    const bool isAgents = isInside(path, agentProjects);
    const std::string_view start = isAgents ? std::string_view(agentProjects) : std::string_view(home);
    std::string folder(start);
    int depth = isAgents ? 0 : -1;
    for (const std::string_view name : components(std::string_view(path).substr(start.size()))) {
        const bool isLookedInto = depth < 0
                                      ? isRootName(name)
                                      : !name.starts_with('.') && !holdsWorkOfOthers(name, fileName(folder));
        folder = name.empty() ? folder : joined(folder, name);
        depth += name.empty() ? 0 : 1;
        if ((!name.empty() && !isLookedInto) || depth > projectDepth ||
            platform::kindOf(folder) != EntryKind::folder) {
            return std::nullopt;
        }
        const auto [known, isNew] = seen.try_emplace(folder);
        if (isNew) {
            known->second = traceIn(folder, home);
        }
        if (known->second != ProjectTrace::none) {
            return known->second == ProjectTrace::project ? std::optional(folder) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<ProjectReport> measureProject(const std::string& path, const std::string& home,
                                            HardLinkRegistry& registry, const FileTree::Watch& watch) {
    std::vector<ProjectReport> projects = measureProjects({path}, home, registry, watch);
    return projects.empty() ? std::nullopt : std::optional(std::move(projects.front()));
}

std::vector<ProjectReport> measureProjects(const std::vector<std::string>& paths, const std::string& home,
                                           HardLinkRegistry& registry, const FileTree::Watch& watch) {
    std::vector<platform::TreeRequest> requests;
    for (const std::string& path : paths) {
        if (platform::kindOf(path) == EntryKind::folder) {
            requests.push_back({path});
        }
    }
    std::vector<platform::TreePolicy> policies(requests.size());
    parallelFor(requests.size(), watch.stop, [&](std::size_t index) {
        policies[index] = policyFor(std::string(requests[index].path), watch.stop);
        requests[index].policy = &policies[index];
    });
    const std::vector<platform::TreeSums> own =
        platform::walkTrees(requests, FileTree::contextOf(registry, watch));
    std::vector<std::string> artifactPaths;
    for (const platform::TreeSums& sums : own) {
        artifactPaths.insert(artifactPaths.end(), sums.setAside.begin(), sums.setAside.end());
    }
    const std::vector<Usage> artifactUsages =
        FileTree::measureAll({artifactPaths.begin(), artifactPaths.end()}, registry, watch);

    std::vector<ProjectReport> projects;
    std::size_t nextArtifact = 0;
    for (std::size_t index = 0; index < requests.size(); ++index) {
        const std::string path(requests[index].path);
        const bool isInHome = path.size() > home.size() && isInside(path, home);
        ProjectReport project{.name = isInHome ? path.substr(home.size() + 1) : path,
                              .path = path,
                              .usage = FileTree::usageOf(own[index]),
                              .artifacts = {},
                              .lastCodeChange = own[index].lastDatedChange};
        std::vector<std::pair<std::string, Usage>> measured;
        for (std::size_t count = own[index].setAside.size(); count > 0; --count, ++nextArtifact) {
            measured.emplace_back(std::move(artifactPaths[nextArtifact]), artifactUsages[nextArtifact]);
        }
        addArtifacts(project, std::move(measured));
        projects.push_back(std::move(project));
    }
    return projects;
}

} // namespace lumo::Scanner
