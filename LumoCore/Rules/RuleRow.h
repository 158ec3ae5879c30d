#pragma once

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Rules/Rule.h"

#include <span>
#include <string_view>
#include <vector>

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
    /// Desktop ids, for a row of several programs: whichever of them runs is to be quit.
    std::vector<std::string_view> closeFirstAny = {};
    std::vector<Locator> onLinux = {}; ///< Further places there.
    /// Name, explanation and instruction there. Empty where the first ones hold on every system.
    Words nameOnLinux = {};
    Words explanationOnLinux = {};
    Words handOnLinux = {};
    /// The command frees only some of the places there, so what is in them is deleted instead.
    bool emptiesOnLinux = false;
};

/// The 64 of the catalogue, by their safety.
std::span<const Row> safeRows();
std::span<const Row> reviewRows();
std::span<const Row> keepRows();

/// Linux's own rows: their first place is `locator`.
std::span<const Row> linuxSafeRows();
std::span<const Row> linuxReviewRows();
std::span<const Row> linuxKeepRows();

} // namespace lumo::RuleCatalog
