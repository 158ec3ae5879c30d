#include "LumoCore/Cleanup/ToolPlaces.h"

#include "LumoCore/Basics/Path.h"

#include <array>
#include <string_view>

namespace lumo {

namespace {

struct ToolPlace {
    std::string_view tool;
    std::string_view variable;
    bool isAbove = false; ///< The variable names the folder that holds the shown one.
};

/// As the tools' own documentation has them.
constexpr auto places = std::to_array<ToolPlace>({{"npm", "npm_config_cache", true},
                                                  {"pip", "PIP_CACHE_DIR"},
                                                  {"uv", "UV_CACHE_DIR"},
                                                  {"yarn", "YARN_CACHE_FOLDER"},
                                                  {"pnpm", "npm_config_store_dir"},
                                                  {"bun", "BUN_INSTALL_CACHE_DIR"},
                                                  {"brew", "HOMEBREW_CACHE"}});

} // namespace

std::vector<std::string> variablesHolding(const std::vector<std::string>& words,
                                          const std::vector<std::string>& paths) {
    std::vector<std::string> variables;
    for (const ToolPlace& place : places) {
        if (!words.empty() && words.front() == place.tool && !paths.empty()) {
            const std::string_view shown = paths.front();
            variables.push_back(std::string(place.variable) + "=" +
                                std::string(place.isAbove ? parentOf(shown) : shown));
        }
    }
    return variables;
}

} // namespace lumo
