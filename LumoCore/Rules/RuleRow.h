#pragma once

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/Rule.h"

#include <span>
#include <string_view>

/// How the catalogue is written down: one row a rule, both languages side by side.
namespace lumo::RuleCatalog {

enum class Freeing { byCommand, byHand, deletingContents, deletingItems };

struct HowToFree {
    Freeing way;
    Words words = {}; ///< The command line, or the instruction.
};

/// Commands are never translated.
constexpr HowToFree command(std::string_view line) {
    return {Freeing::byCommand, {line, line}};
}
constexpr HowToFree byHand(std::string_view es, std::string_view en) {
    return {Freeing::byHand, {es, en}};
}
inline constexpr HowToFree deleteContents{Freeing::deletingContents};
inline constexpr HowToFree deleteItems{Freeing::deletingItems};

struct Row {
    std::string_view id;
    Category category;
    Words name;
    Words explanation;
    HowToFree cleanup;
    Locator locator;
    std::string_view closeFirst = {};
};

std::span<const Row> safeRows();
std::span<const Row> reviewRows();
std::span<const Row> keepRows();

} // namespace lumo::RuleCatalog
