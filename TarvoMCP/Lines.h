#pragma once

#include "TarvoMCP/Page.h"
#include "TarvoMCP/Tool.h"

#include <cstddef>
#include <cstdint>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

/// The texts of answers, line by line, and the arguments that several tools have.
namespace tarvo::mcp {

inline constexpr std::size_t usualItems = 8;
inline constexpr std::size_t mostLines =
    5; ///< Of a list in a text; with what stands around it, under fifteen.

/// A name in a text for a model: its bytes are those of the record beside it.
std::string named(std::string_view name);

/// "• name — 3 GB — about", on a line of its own.
std::string itemLine(std::string_view name, std::int64_t bytes, std::string_view about = {});

/// The first lines of a list, by `line`.
template <class Element>
std::string firstLines(const std::vector<Element>& elements, const auto& line) {
    std::string lines;
    for (const Element& element : elements | std::views::take(mostLines)) {
        lines += line(element);
    }
    return lines;
}

/// Arguments with those of a page behind them.
JsonValue pagedArguments(std::vector<Property> properties, HasSizes hasSizes = HasSizes::yes);

Property pathArgument();

/// Said where the client stopped the call.
ToolAnswer stopped();

} // namespace tarvo::mcp
