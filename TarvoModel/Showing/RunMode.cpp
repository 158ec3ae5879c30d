#include "TarvoModel/Showing/RunMode.h"

#include <algorithm>
#include <string_view>

namespace tarvo {

RunMode RunMode::from(const std::vector<std::string>& arguments) {
    const auto has = [&](std::string_view word) {
        return std::ranges::any_of(arguments, [&](const std::string& argument) {
            return argument == word ||
                   (argument.starts_with(word) && argument.substr(word.size()).starts_with('='));
        });
    };
    return {.isDemo = has("--demo"), .isCapturing = has("--captura"), .asksForWelcome = has("--bienvenida")};
}

} // namespace tarvo
