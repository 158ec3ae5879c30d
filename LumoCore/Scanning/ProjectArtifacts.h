#pragma once

#include "LumoCore/Basics/Language.h"

#include <array>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

/// Folders inside projects that come back by themselves.
namespace lumo::ProjectArtifacts {

/// Their names in any project. A folder "target" is one, too, in a project with a "Cargo.toml".
inline constexpr std::array<std::string_view, 16> regenerable{
    "node_modules", ".next",       ".nuxt",         ".turbo",      ".svelte-kit", ".parcel-cache",
    ".vite",        "__pycache__", ".pytest_cache", ".mypy_cache", ".ruff_cache", ".build",
    ".venv",        "venv",        ".gradle",       "DerivedData"};

bool isRegenerable(std::string_view name);

/// True when folders called "target" are build output wherever they are in the project.
bool hasTargets(const std::string& project);

/// True when a folder "target" holds sources, as a module or a package of that name does: it is none then.
bool isSourceFolder(const std::string& target);

/// The folders of the project, at most three levels below it, that say of themselves that they come back,
/// absolute: by a CACHEDIR.TAG (bford.info/cachedir), by a CMakeCache.txt that names sources in the project,
/// or as the "target" beside a description for Maven or sbt. Never one that holds sources itself, where a
/// program is built in place. Below a folder of the project only those with the names of results are
/// searched, unless Maven or sbt builds it.
std::vector<std::string> tellingFolders(const std::string& project, const std::stop_token& stop = {});

/// True when the folder is an artifact of the project, by its name or by what it says now.
bool isArtifact(const std::string& folder, const std::string& project);

/// What the folder is known by in its project: its file name when that says enough, else the path from there.
std::string nameOf(std::string_view folder, std::string_view project);

/// How a folder of that name comes back.
std::string hint(std::string_view name, Language language = currentLanguage());

} // namespace lumo::ProjectArtifacts
