#include "TarvoMCP/Lines.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"

#include <fmt/format.h>

namespace tarvo::mcp {

using lumo::Words;

std::string named(std::string_view name) {
    return lumo::printableWithStrays(name);
}

std::string itemLine(std::string_view name, std::int64_t bytes, std::string_view about) {
    return fmt::format("\n• {} — {}{}{}", named(name), lumo::ByteFormat::string(bytes),
                       about.empty() ? "" : " — ", about);
}

JsonValue pagedArguments(std::vector<Property> properties, HasSizes hasSizes) {
    for (Property& each : pageProperties(usualItems, hasSizes)) {
        properties.push_back(std::move(each));
    }
    return argumentsOf(std::move(properties));
}

Property pathArgument() {
    return {"path",
            schema("string",
                   Words{"en la carpeta personal: ~/Downloads", "in the home folder: ~/Downloads"}.in()),
            true};
}

ToolAnswer stopped() {
    return problem(Words{"Interrumpido.", "Interrupted."}.in());
}

} // namespace tarvo::mcp
