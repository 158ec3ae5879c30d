#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "TarvoModel/Showing/Rows.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// What closer looks found, as a window shows it: rows beside those of the scan, and a line for each kind.
namespace tarvo {

/// The items of a window, which join its plan.
struct ShownItems {
    std::vector<lumo::PlanEntry> entries = {}; ///< What is blocked has that as its reason.
    std::vector<Row> rows = {};                ///< Kind by kind, the largest first.
    lumo::ResolvedPaths shown = {};            ///< What their paths meant when they were looked at.
};

/// The items of these inventories, each id once.
ShownItems shownItems(const std::vector<lumo::Inventory>& inventories);

/// Gives a tile to each item that stands for something in the home which no other row stands for.
void giveTiles(std::span<Row> items, std::span<const Row> others, const std::string& home);

/// What is said of a kind beside its name.
struct KindLine {
    std::string amount; ///< What can be ticked of it; empty until it was looked at, and for nothing.
    std::string note;   ///< What else there is to know, in a few words; may be empty.

    friend bool operator==(const KindLine&, const KindLine&) = default;
};

/// How far a look at a kind is.
enum class LookState { unwanted, wanted, going, done };

/// `found` is what the last look found, or null.
KindLine kindLine(const lumo::Inventory* found, LookState state,
                  lumo::Language language = lumo::currentLanguage());

/// Why the list of a kind is empty, or what of it is missing; empty when there is nothing to say. `found` as
/// above.
std::string kindNote(const lumo::Inventory* found, LookState state, const std::string& home,
                     lumo::Language language = lumo::currentLanguage());

/// What could not be looked at, by name as far as that is short: "1 place could not be looked at: ~/x
/// (permission denied)"; empty for nothing.
std::string unreadText(const lumo::Inventory& inventory, const std::string& home,
                       lumo::Language language = lumo::currentLanguage());

/// What can be ticked of these items, and what cannot.
std::int64_t tickableBytes(const lumo::Inventory& inventory);
std::int64_t blockedBytes(const lumo::Inventory& inventory);

} // namespace tarvo
