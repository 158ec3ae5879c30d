#pragma once

#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Cleanup/PathGuard.h"
#include "TarvoModel/Showing/ItemRows.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/Selection.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvo {

/// A plan as a window shows it.
struct ShownPlan {
    std::vector<lumo::PlanEntry> entries = {};
    lumo::ResolvedPaths shown = {}; ///< What their paths meant.
    std::vector<Row> rows = {};
    Selection defaults = {};      ///< What the plan ticks by itself.
    std::int64_t recoverable = 0; ///< See `CleanupPlanner::safeRecoverableBytes`.
};

/// A plan and the items beside it as one. There may be thousands of those, so that it is put together where
/// the pass or the look ran, and whoever shows it only takes it over. Nobody changes it any more; all may
/// share it.
class WholePlan final {
  public:
    /// Null items are none. The home is where items have tiles.
    WholePlan(std::shared_ptr<const ShownPlan> plan, std::shared_ptr<const ShownItems> items,
              const std::string& home);
    static std::shared_ptr<const WholePlan> of(ShownPlan plan);

    /// What it was made of; never null.
    [[nodiscard]] const std::shared_ptr<const ShownPlan>& plan() const { return plan_; }
    [[nodiscard]] const std::shared_ptr<const ShownItems>& items() const { return items_; }

    /// Those of the plan in its order, then those of the items.
    [[nodiscard]] const std::vector<const lumo::PlanEntry*>& entries() const { return entries_; }
    /// The entry with the id; none when there is none.
    [[nodiscard]] const lumo::PlanEntry* entry(std::string_view id) const;
    /// The entry of the plan that takes along all that the item with the id is; none where there is none, or
    /// a tool decides what it takes.
    [[nodiscard]] const lumo::PlanEntry* holder(std::string_view id) const;
    /// The items that go along when these entries do.
    [[nodiscard]] std::set<std::string> takenAlong(const std::set<std::string>& ids) const;
    /// Likewise, whatever is searched for.
    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    /// The bytes of all that can be ticked, nothing twice.
    [[nodiscard]] std::int64_t reachable() const { return reachable_; }
    /// The same without these rows and entries, made of the same.
    [[nodiscard]] std::shared_ptr<const WholePlan> without(const std::set<std::string>& ids) const;

  private:
    void findHolders();
    [[nodiscard]] std::int64_t sumOfTickable() const;

    std::shared_ptr<const ShownPlan> plan_;
    std::shared_ptr<const ShownItems> items_;
    std::vector<const lumo::PlanEntry*> entries_;                          ///< Into those two.
    std::unordered_map<std::string_view, const lumo::PlanEntry*> byID_;    ///< Likewise.
    std::unordered_map<std::string_view, const lumo::PlanEntry*> holders_; ///< By the items' ids.
    std::vector<Row> rows_;
    std::int64_t reachable_ = 0;
};

} // namespace tarvo
