#pragma once

#include "LumoCore/Basics/Language.h"

#include <array>
#include <string>
#include <string_view>

/// Folders inside projects that come back by themselves.
namespace lumo::ProjectArtifacts {

/// Their names in any project. A folder "target" is one, too, in a project with a "Cargo.toml".
inline constexpr std::array<std::string_view, 16> regenerable{
    "node_modules", ".next",       ".nuxt",         ".turbo",      ".svelte-kit", ".parcel-cache",
    ".vite",        "__pycache__", ".pytest_cache", ".mypy_cache", ".ruff_cache", ".build",
    ".venv",        "venv",        ".gradle",       "DerivedData"};

bool isRegenerable(std::string_view name);

/// How a folder of that name comes back.
std::string hint(std::string_view name, Language language = currentLanguage());

} // namespace lumo::ProjectArtifacts
