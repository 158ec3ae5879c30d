#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Parallel.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
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
    std::optional<std::uint64_t> device = {}; ///< Of the root it lies below; absent for a root.
};

/// What a look into a folder tells.
struct Look {
    bool isProject = false;
    std::vector<Visited> below;
};

bool marksProject(std::string_view name) {
    constexpr std::array<std::string_view, 9> markers{"package.json", "pyproject.toml",   "requirements.txt",
                                                      "Cargo.toml",   "Package.swift",    "go.mod",
                                                      "build.gradle", "build.gradle.kts", ".git"};
    return std::ranges::find(markers, name) != markers.end();
}

Look lookInto(const Visited& folder, const std::stop_token& stop) {
    Look look;
    const auto device = platform::visitFolder(folder.path, [&](std::string_view name, EntryKind kind) {
        look.isProject = marksProject(name);
        if (kind == EntryKind::folder && !name.starts_with('.') && !ProjectArtifacts::isRegenerable(name)) {
            look.below.push_back({folder.path + "/" + std::string(name)});
        }
        return !look.isProject && !stop.stop_requested();
    });
    if (folder.device && device != folder.device) {
        return {}; // Another volume.
    }
    for (Visited& below : look.below) {
        below.device = device;
    }
    return look;
}

std::vector<Visited> projectRoots(const std::string& home) {
    constexpr std::array<std::string_view, 6> elsewhere{"Library", "Applications", "Pictures",
                                                        "Music",   "Movies",       "Public"};
    std::vector<Visited> roots;
    for (const std::string& path : children(home)) {
        const std::string_view name = fileName(path);
        const bool isCandidate =
            !name.starts_with('.') && std::ranges::find(elsewhere, name) == elsewhere.end();
        if (isCandidate && platform::kindOf(path) == EntryKind::folder) {
            roots.push_back({path});
        }
    }
    std::string agentProjects = home + "/.minimax-agent/projects";
    if (platform::kindOf(agentProjects)) {
        roots.push_back({std::move(agentProjects)});
    }
    return roots;
}

/// Adds a folder's measured parts to its project, one artifact for each name.
void addArtifacts(ProjectReport& project, std::vector<std::pair<std::string, Usage>> measured) {
    std::map<std::string, ProjectArtifact, std::less<>> byName;
    for (auto& [path, usage] : measured) {
        const std::string name(fileName(path));
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

platform::TreePolicy makePolicy(bool hasTarget) {
    return {.setsAside =
                [hasTarget](std::string_view name) {
                    return ProjectArtifacts::isRegenerable(name) || (hasTarget && name == "target");
                },
            .undatedFiles = {".DS_Store"},
            .undatedFolders = {".git"}};
}

platform::TreeRequest requestFor(const std::string& project) {
    static const platform::TreePolicy plain = makePolicy(false);
    static const platform::TreePolicy withTarget = makePolicy(true);
    return {project, platform::kindOf(project + "/Cargo.toml") ? &withTarget : &plain};
}

} // namespace

std::vector<std::string> discoverProjects(const std::string& home, int maxDepth,
                                          const std::stop_token& stop) {
    std::vector<std::string> projects;
    std::vector<Visited> level = projectRoots(home);
    // Level by level, because the folders of one level can be looked into all at once.
    for (int depth = 0; depth <= maxDepth && !level.empty(); ++depth) {
        std::vector<Look> looks(level.size());
        parallelFor(level.size(), stop,
                    [&](std::size_t index) { looks[index] = lookInto(level[index], stop); });
        std::vector<Visited> below;
        for (std::size_t index = 0; index < level.size(); ++index) {
            if (looks[index].isProject) {
                projects.push_back(std::move(level[index].path));
            } else {
                std::ranges::move(looks[index].below, std::back_inserter(below));
            }
        }
        level = std::move(below);
    }
    std::ranges::sort(projects);
    return projects;
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
            requests.push_back(requestFor(path));
        }
    }
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
