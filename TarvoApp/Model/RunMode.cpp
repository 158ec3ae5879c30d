#include "TarvoApp/Model/RunMode.h"

#include <algorithm>
#include <string_view>

namespace tarvo {

RunMode RunMode::from(const std::vector<std::string>& arguments) {
    const auto has = [&](std::string_view word) {
        return std::ranges::find(arguments, word) != arguments.end();
    };
    return {.isDemo = has("--demo"), .isCapturing = has("--captura"), .asksForWelcome = has("--bienvenida")};
}

} // namespace tarvo
