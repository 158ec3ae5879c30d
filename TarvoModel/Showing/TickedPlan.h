#pragma once

#include "TarvoModel/Showing/DiskMap.h"
#include "TarvoModel/Showing/Selection.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvo {

/// The plan that a window shows, and what of it is ticked. Looking an entry up takes no search: every row and
/// tile asks for its own whenever something changes. Entries are never copied for that either, since one may
/// have thousands of paths.
class TickedPlan final {
  public:
    /// Takes over the plan of a new report; what is ticked is reconciled with it.
    void take(std::vector<lumo::PlanEntry> entries, Selection defaults);
    /// Takes over what closer looks found, which comes after the plan's own entries; ticked is reconciled.
    void takeItems(std::vector<lumo::PlanEntry> entries);

    /// In the plan's order; valid until it takes over others.
    [[nodiscard]] const std::vector<const lumo::PlanEntry*>& entries() const { return entries_; }
    [[nodiscard]] const Selection& selection() const { return selection_; }
    [[nodiscard]] const Selection& defaultSelection() const { return defaults_; }

    /// The entry with the id; none when there is none.
    [[nodiscard]] const lumo::PlanEntry* entry(const std::string& id) const;
    [[nodiscard]] bool canSelect(const std::string& id) const;
    [[nodiscard]] TileState stateOf(const std::string& id) const;

    /// Ticks or unticks; false when that cannot be ticked. Of an item and what holds it, or lies in it, only
    /// the one that was ticked last stays ticked: nothing counts twice.
    bool toggle(const std::string& id);
    /// Ticks all of these that can be ticked, or unticks them when all of those are ticked; false when none
    /// can be.
    bool toggleAll(const std::vector<std::string>& ids);
    /// How many of these can be ticked, and how many are.
    struct Count {
        std::size_t tickable = 0;
        std::size_t ticked = 0;

        friend bool operator==(const Count&, const Count&) = default;
    };
    [[nodiscard]] Count count(const std::vector<std::string>& ids) const;
    /// Ticks what the plan ticks by itself, and nothing else, if the phase allows that.
    void selectSafe(const Phase& phase);
    void deselectAll();
    /// Neither ticked any more nor known to have been: what a cleanup took. Once the plan ticks it by itself
    /// again, that is as new.
    void forget(const std::set<std::string>& ids);

    /// True when there is something to clean.
    [[nodiscard]] bool hasTicked() const;
    /// What the ticked entries do, in the plan's order, and what that comes to.
    [[nodiscard]] std::vector<lumo::CleanupAction> selectedActions() const;
    [[nodiscard]] CleanupShares shares() const;

  private:
    [[nodiscard]] bool isTicked(const lumo::PlanEntry& entry) const;
    void tick(const std::string& id);
    /// Finds the entries anew after others have been taken over.
    void settle(Selection defaults);

    std::vector<lumo::PlanEntry> planned_;
    std::vector<lumo::PlanEntry> items_;
    std::vector<const lumo::PlanEntry*> entries_;                       ///< Into those two.
    std::unordered_map<std::string_view, const lumo::PlanEntry*> byID_; ///< Likewise.
    Selection selection_;
    Selection defaults_;
};

} // namespace tarvo
