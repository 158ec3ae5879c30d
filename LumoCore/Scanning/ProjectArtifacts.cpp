#include "LumoCore/Scanning/ProjectArtifacts.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Scanning/ProjectMarkers.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumo::ProjectArtifacts {

namespace {

using platform::EntryKind;

constexpr std::string_view target = "target";
constexpr std::string_view cacheTag = "CACHEDIR.TAG";
constexpr std::string_view buildCache = "CMakeCache.txt";
constexpr int deepest = 3; ///< Levels below a project in which folders may say what they are.

/// What people write, and nobody generates into a folder of results as the first thing in it.
constexpr std::array<std::string_view, 24> sourceExtensions{
    ".c",  ".cc",  ".cpp", ".cs", ".cxx", ".dart", ".ex", ".f90", ".go", ".hs",    ".java",  ".jl",
    ".kt", ".lua", ".m",   ".mm", ".php", ".pl",   ".py", ".rb",  ".rs", ".scala", ".swift", ".ts"};

bool isSource(std::string_view name) {
    return std::ranges::any_of(sourceExtensions,
                               [&](std::string_view extension) { return name.ends_with(extension); });
}

/// Of what a look into a folder found, that which tells what kind of folder it is.
struct Contents {
    bool hasTag = false;
    bool hasBuildCache = false;
    bool hasBuildSteps = false; ///< CMake made the folder, and may have generated sources into it.
    bool hasModules = false;    ///< Maven or sbt may build each of several folders.
    bool hasMarker = false;
    bool hasSource = false;
    std::vector<std::string> folders; ///< Their names.
};

Contents lookInto(const std::string& folder) {
    Contents contents;
    platform::visitFolder(folder, [&](std::string_view name, EntryKind kind) {
        contents.hasMarker = contents.hasMarker || marksProject(name);
        if (kind == EntryKind::folder) {
            contents.folders.emplace_back(name);
        } else if (kind == EntryKind::file) {
            contents.hasTag = contents.hasTag || name == cacheTag;
            contents.hasModules = contents.hasModules || name == "pom.xml" || name == "build.sbt";
            contents.hasBuildCache = contents.hasBuildCache || name == buildCache;
            contents.hasBuildSteps = contents.hasBuildSteps || name == "cmake_install.cmake";
            contents.hasSource = contents.hasSource || isSource(name);
        }
        return true;
    });
    return contents;
}

std::vector<std::string> foldersIn(const std::string& folder) {
    std::vector<std::string> names;
    platform::visitFolder(folder, [&](std::string_view name, EntryKind kind) {
        if (kind == EntryKind::folder) {
            names.emplace_back(name);
        }
        return true;
    });
    return names;
}

/// True of the names that folders have whose subfolders are results. Looking into all folders of all projects
/// would take a quarter of the time that a scan takes.
bool mayHoldResults(std::string_view name) {
    constexpr std::array<std::string_view, 4> usual{"bin", "dist", "out", "tmp"};
    const std::string lower = lowerCased(name);
    return lower.find("build") != std::string::npos || lower.find("cache") != std::string::npos ||
           std::ranges::find(usual, lower) != usual.end();
}

/// What CMake writes beside its results, and takes sources of others to.
bool isBuildSystems(std::string_view name) {
    return name == "CMakeFiles" || name == "_deps" || name == "Testing" || name.ends_with("_autogen") ||
           name.starts_with('.');
}

/// True when somebody's sources lie in the folder or not far below.
bool holdsSources(const std::string& folder, const Contents& contents, int depth) {
    if (contents.hasMarker || (contents.hasSource && (depth == 0 || !contents.hasBuildSteps))) {
        return true;
    }
    return depth + 1 < deepest && std::ranges::any_of(contents.folders, [&](const std::string& name) {
               const std::string below = joined(folder, name);
               return !isBuildSystems(name) && holdsSources(below, lookInto(below), depth + 1);
           });
}

bool hasSignedTag(const std::string& folder) {
    constexpr std::string_view signature = "Signature: 8a477f597d28d172789f06886806bc55";
    constexpr std::size_t mostBytes = std::size_t{64} * 1024;
    const auto text = platform::readWhole(joined(folder, cacheTag), mostBytes);
    return text && text->starts_with(signature);
}

/// The folder of the sources that CMake builds in that one, without links; absent when it does not say.
std::optional<std::string> sourcesBuiltIn(const std::string& folder) {
    constexpr std::string_view key = "\nCMAKE_HOME_DIRECTORY:INTERNAL=";
    constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
    const auto text = platform::readWhole(joined(folder, buildCache), mostBytes);
    const std::string lines = "\n" + text.value_or("");
    const std::size_t found = lines.find(key);
    if (found == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t start = found + key.size();
    const auto real = platform::withoutLinks(lines.substr(start, lines.find('\n', start) - start));
    return real ? std::optional(*real) : std::nullopt;
}

bool isBuiltFrom(const std::string& folder, const std::string& project) {
    const auto sources = sourcesBuiltIn(folder);
    const auto realProject = platform::withoutLinks(project);
    const auto realFolder = platform::withoutLinks(folder);
    return sources && realProject && realFolder && isInside(*sources, *realProject) &&
           !isInside(*sources, *realFolder) && platform::kindOf(joined(*sources, "CMakeLists.txt"));
}

/// A "target" where Maven and sbt put theirs.
bool isTargetBesideItsDescription(std::string_view folder) {
    const std::string_view above = parentOf(folder);
    const auto stands = [&](std::string_view name) {
        return platform::kindOf(joined(above, name)) == EntryKind::file;
    };
    return fileName(folder) == target && (stands("pom.xml") || stands("build.sbt") ||
                                          (fileName(above) == "project" && stands("build.properties")));
}

/// Asks little of the disk, and is false of nearly all folders.
bool maySaySo(const std::string& folder) {
    return platform::kindOf(joined(folder, cacheTag)) || platform::kindOf(joined(folder, buildCache)) ||
           isTargetBesideItsDescription(folder);
}

bool says(const std::string& folder, const Contents& contents, const std::string& project) {
    if (isTargetBesideItsDescription(folder)) {
        return !contents.hasSource;
    }
    return ((contents.hasTag && hasSignedTag(folder)) ||
            (contents.hasBuildCache && isBuiltFrom(folder, project))) &&
           !holdsSources(folder, contents, 0);
}

} // namespace

bool isRegenerable(std::string_view name) {
    return std::ranges::find(regenerable, name) != regenerable.end();
}

bool hasTargets(const std::string& project) {
    return platform::kindOf(joined(project, "Cargo.toml")).has_value();
}

bool isSourceFolder(const std::string& folder) {
    return lookInto(folder).hasSource;
}

std::vector<std::string> tellingFolders(const std::string& project, const std::stop_token& stop) {
    const Contents top = lookInto(project);
    const bool targetsAreKnown = hasTargets(project);
    std::vector<std::string> telling;
    std::vector<std::string> level{project};
    for (int depth = 1; depth <= deepest && !level.empty(); ++depth) {
        std::vector<std::string> below;
        for (const std::string& folder : level) {
            for (const std::string& name : depth == 1 ? top.folders : foldersIn(folder)) {
                if (stop.stop_requested()) {
                    return {};
                }
                if (isRegenerable(name) || name == ".git" || (targetsAreKnown && name == target)) {
                    continue;
                }
                std::string path = joined(folder, name);
                if (maySaySo(path) && says(path, lookInto(path), project)) {
                    telling.push_back(std::move(path));
                } else if (top.hasModules || mayHoldResults(name)) {
                    below.push_back(std::move(path));
                }
            }
        }
        level = std::move(below);
    }
    return telling;
}

bool isArtifact(const std::string& folder, const std::string& project) {
    const std::string_view name = fileName(folder);
    if (folder == project || !isInside(folder, project)) {
        return false;
    }
    if (isRegenerable(name)) {
        return true;
    }
    if (name == target && hasTargets(project)) {
        return !isSourceFolder(folder);
    }
    const auto levels = components(std::string_view(folder).substr(project.size())).size();
    return levels <= deepest && says(folder, lookInto(folder), project);
}

std::string nameOf(std::string_view folder, std::string_view project) {
    const std::string_view name = fileName(folder);
    return std::string(isRegenerable(name) || name == target ? name : folder.substr(project.size() + 1));
}

std::string hint(std::string_view name, Language language) {
    if (name == "node_modules") {
        return Words{"se reinstala con npm, pnpm o bun install", "reinstalled with npm, pnpm or bun install"}
            .in(language);
    }
    if (name == ".venv" || name == "venv") {
        return Words{"se recrea con uv sync o pip install", "recreated with uv sync or pip install"}.in(
            language);
    }
    if (name == "__pycache__" || name == ".pytest_cache" || name == ".mypy_cache" || name == ".ruff_cache") {
        return Words{"caché de Python", "Python cache"}.in(language);
    }
    if (!isRegenerable(name) && name != target) {
        return Words{"la vuelve a crear la herramienta que la hizo", "recreated by the tool that made it"}.in(
            language);
    }
    return Words{"se regenera al compilar", "recreated when you build"}.in(language);
}

} // namespace lumo::ProjectArtifacts
