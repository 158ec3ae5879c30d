#pragma once

#include "TarvoModel/Showing/DiskMap.h"
#include "TarvoModel/Showing/Selection.h"
#include "TarvoModel/Showing/WholePlan.h"

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// The plan that a window shows, and what of it is ticked. Looking an entry up takes no search: every row and
/// tile asks for its own whenever something changes.
class TickedPlan final {
  public:
    /// Takes over a new plan, or one with other items; what is ticked is reconciled with it.
    void take(std::shared_ptr<const WholePlan> whole);
    void take(ShownPlan plan) { take(WholePlan::of(std::move(plan))); }
    /// Shows other rows of the same plan.
    void narrow(std::shared_ptr<const WholePlan> whole) { whole_ = std::move(whole); }

    /// Never null.
    [[nodiscard]] const std::shared_ptr<const WholePlan>& whole() const { return whole_; }
    [[nodiscard]] const Selection& selection() const { return selection_; }
    [[nodiscard]] const Selection& defaultSelection() const { return defaults_; }

    /// The entry with the id; none when there is none.
    [[nodiscard]] const lumo::PlanEntry* entry(const std::string& id) const { return whole_->entry(id); }
    [[nodiscard]] bool canSelect(const std::string& id) const;
    /// An item is as ticked as the entry that takes it along.
    [[nodiscard]] TileState stateOf(const std::string& id) const;
    /// The entry that takes the item along now; none when there is none.
    [[nodiscard]] const lumo::PlanEntry* takenAlongBy(const std::string& id) const;

    /// Ticks or unticks; false when that cannot be ticked. Of an item and what holds it, or lies in it, only
    /// the one that was ticked last stays ticked: nothing counts twice. What is taken along is unticked with
    /// all that goes with it.
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
    void untick(const std::string& id);

    std::shared_ptr<const WholePlan> whole_ = WholePlan::of({});
    Selection selection_;
    Selection defaults_;
};

} // namespace tarvo
