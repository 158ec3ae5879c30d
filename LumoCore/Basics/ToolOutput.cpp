#include "LumoCore/Basics/ToolOutput.h"

#include "LumoCore/Basics/Words.h"

namespace lumo {

std::string failureDetail(std::string_view output, int status, Language language) {
    const std::size_t last = output.find_last_not_of(" \t\r\n");
    if (last == std::string_view::npos) {
        return Words{"código ", "code "}.in(language) + std::to_string(status);
    }
    output = output.substr(0, last + 1);
    return std::string(output.substr(output.rfind('\n') + 1));
}

} // namespace lumo
