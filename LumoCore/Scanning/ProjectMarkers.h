#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace lumo {

/// True when what has that name in a folder makes the folder a developer project.
constexpr bool marksProject(std::string_view name) {
    constexpr std::array<std::string_view, 19> markers{"package.json",
                                                       "pyproject.toml",
                                                       "requirements.txt",
                                                       "Cargo.toml",
                                                       "Package.swift",
                                                       "go.mod",
                                                       "build.gradle",
                                                       "build.gradle.kts",
                                                       ".git",
                                                       "CMakeLists.txt",
                                                       "pom.xml",
                                                       "setup.py",
                                                       "composer.json",
                                                       "Gemfile",
                                                       "pubspec.yaml",
                                                       "mix.exs",
                                                       "build.sbt",
                                                       "settings.gradle",
                                                       "settings.gradle.kts"};
    return std::ranges::find(markers, name) != markers.end() ||
           (name.ends_with(".csproj") && name.size() > std::string_view(".csproj").size());
}

} // namespace lumo
