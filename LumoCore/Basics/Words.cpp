#include "LumoCore/Basics/Words.h"

#include <fmt/args.h>
#include <fmt/format.h>

namespace lumo {

std::string Words::filled(std::string_view pattern, std::span<const WordsArgument> arguments) {
    fmt::dynamic_format_arg_store<fmt::format_context> store;
    for (const WordsArgument& argument : arguments) {
        std::visit([&](const auto& value) { store.push_back(value); }, argument);
    }
    return fmt::vformat(pattern, store);
}

} // namespace lumo
