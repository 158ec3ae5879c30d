#include "LumoCore/Cleanup/ToolPlaces.h"

#include "LumoCore/Basics/Path.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lumo {

namespace {

struct ToolPlace {
    std::string_view tool;
    std::string_view variable;
    bool isAbove = false;           ///< The variable names the folder that holds the shown one.
    std::string_view argument = {}; ///< When not empty: only of a command with this argument.
};

/// As the tools' own documentation has them.
constexpr auto places = std::to_array<ToolPlace>({{"npm", "npm_config_cache", true},
                                                  {"pip", "PIP_CACHE_DIR"},
                                                  {"uv", "UV_CACHE_DIR"},
                                                  {"yarn", "YARN_CACHE_FOLDER"},
                                                  {"pnpm", "npm_config_store_dir"},
                                                  {"bun", "BUN_INSTALL_CACHE_DIR"},
                                                  {"brew", "HOMEBREW_CACHE"},
                                                  {"go", "GOMODCACHE", false, "-modcache"},
                                                  {"go", "GOCACHE", false, "-cache"},
                                                  {"dotnet", "NUGET_PACKAGES"},
                                                  {"conda", "CONDA_PKGS_DIRS"},
                                                  {"ccache", "CCACHE_DIR"},
                                                  {"pre-commit", "PRE_COMMIT_HOME"},
                                                  {"golangci-lint", "GOLANGCI_LINT_CACHE"}});

bool isMeant(const ToolPlace& place, const std::vector<std::string>& words) {
    return !words.empty() && words.front() == place.tool &&
           (place.argument.empty() || std::ranges::find(words, place.argument) != words.end());
}

} // namespace

std::vector<std::string> variablesHolding(const std::vector<std::string>& words,
                                          const std::vector<std::string>& paths) {
    std::vector<std::string> variables;
    for (const ToolPlace& place : places) {
        if (isMeant(place, words) && !paths.empty()) {
            const std::string_view shown = paths.front();
            variables.push_back(std::string(place.variable) + "=" +
                                std::string(place.isAbove ? parentOf(shown) : shown));
        }
    }
    return variables;
}

} // namespace lumo
