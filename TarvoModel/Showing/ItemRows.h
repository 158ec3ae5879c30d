#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "LumoCore/Inventories/DetailItem.h"
#include "TarvoModel/Showing/Rows.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// What closer looks found, as a window shows it: rows beside those of the scan, and a line for each kind.
namespace tarvo {

/// What the list has of a kind.
struct KindSums {
    std::size_t items = 0;
    std::int64_t tickable = 0;
    std::int64_t blocked = 0;
    /// Large files that are not listed since the duplicates tell of them.
    std::size_t copies = 0;

    friend bool operator==(const KindSums&, const KindSums&) = default;
};

/// The items of a window, which join its plan.
struct ShownItems {
    std::vector<lumo::PlanEntry> entries = {}; ///< What is blocked has that as its reason.
    std::vector<Row> rows = {};                ///< Kind by kind, the largest first.
    lumo::ResolvedPaths shown = {};            ///< What their paths meant when they were looked at.
    std::array<KindSums, lumo::inventoryKindCount> sums = {}; ///< Of each kind.
};

/// The items of these inventories, each id once. `home` is what is written as "~".
ShownItems shownItems(const std::vector<lumo::Inventory>& inventories, const std::string& home);

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

/// `found` is what the last look found, or null; `sums` what is listed of it.
KindLine kindLine(const lumo::Inventory* found, const KindSums& sums, LookState state,
                  lumo::Language language = lumo::currentLanguage());

/// Why the list of a kind is empty, or what of it is missing; empty when there is nothing to say. As above.
std::string kindNote(const lumo::Inventory* found, const KindSums& sums, LookState state,
                     const std::string& home, lumo::Language language = lumo::currentLanguage());

/// What could not be looked at, by name as far as that is short: "1 place could not be looked at: ~/x
/// (permission denied)"; empty for nothing.
std::string unreadText(const lumo::Inventory& inventory, const std::string& home,
                       lumo::Language language = lumo::currentLanguage());

} // namespace tarvo
