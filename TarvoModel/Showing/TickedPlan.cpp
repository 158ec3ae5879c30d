#include "TarvoModel/Showing/TickedPlan.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/DetailItem.h"

#include <algorithm>
#include <utility>

namespace tarvo {

namespace {

/// True when one of them takes something that the other one takes.
bool overlap(const lumo::CleanupAction& one, const lumo::CleanupAction& other) {
    return std::ranges::any_of(one.measuredPaths, [&](const std::string& path) {
        return std::ranges::any_of(other.measuredPaths, [&](const std::string& with) {
            return lumo::isInside(path, with) || lumo::isInside(with, path);
        });
    });
}

} // namespace

void TickedPlan::take(std::shared_ptr<const WholePlan> whole) {
    const bool isNewPlan = whole_->plan() != whole->plan();
    whole_ = std::move(whole);
    // With other items alone, what was forgotten of the plan stays so.
    const Selection defaults = isNewPlan ? whole_->plan()->defaults : defaults_;
    selection_ =
        reconciled(selection_, defaults_, defaults, [this](const std::string& id) { return canSelect(id); });
    defaults_ = defaults;
}

bool TickedPlan::canSelect(const std::string& id) const {
    const lumo::PlanEntry* found = entry(id);
    return found != nullptr && !found->skipReason;
}

TileState TickedPlan::stateOf(const std::string& id) const {
    const TileState own = DiskMap::stateOf(id, selection_, entry(id));
    return own == TileState::unselected && takenAlongBy(id) != nullptr ? TileState::selected : own;
}

const lumo::PlanEntry* TickedPlan::takenAlongBy(const std::string& id) const {
    const lumo::PlanEntry* const holder = whole_->holder(id);
    return holder != nullptr && isTicked(*holder) ? holder : nullptr;
}

bool TickedPlan::toggle(const std::string& id) {
    if (!canSelect(id)) {
        return false;
    }
    if (stateOf(id) == TileState::selected) {
        untick(id);
    } else {
        tick(id);
    }
    return true;
}

void TickedPlan::tick(const std::string& id) {
    const lumo::CleanupAction& action = entry(id)->action;
    const bool isItem = lumo::inventoryKindOfID(id).has_value();
    std::erase_if(selection_, [&](const std::string& other) {
        const lumo::PlanEntry* const ticked = entry(other);
        return ticked != nullptr && (isItem || lumo::inventoryKindOfID(other)) &&
               overlap(ticked->action, action);
    });
    selection_.insert(id);
}

void TickedPlan::untick(const std::string& id) {
    selection_.erase(id);
    if (const lumo::PlanEntry* const holder = takenAlongBy(id)) {
        selection_.erase(holder->action.id);
    }
}

TickedPlan::Count TickedPlan::count(const std::vector<std::string>& ids) const {
    Count count;
    for (const std::string& id : ids) {
        count.tickable += canSelect(id) ? 1U : 0U;
        count.ticked += canSelect(id) && stateOf(id) == TileState::selected ? 1U : 0U;
    }
    return count;
}

bool TickedPlan::toggleAll(const std::vector<std::string>& ids) {
    const Count before = count(ids);
    for (const std::string& id : ids) {
        if (before.ticked == before.tickable) {
            untick(id);
        } else if (canSelect(id) && stateOf(id) != TileState::selected) {
            tick(id);
        }
    }
    return before.tickable > 0;
}

void TickedPlan::selectSafe(const Phase& phase) {
    selection_ = safeSelection(selection_, defaults_, phase);
}

void TickedPlan::deselectAll() {
    selection_.clear();
}

void TickedPlan::forget(const std::set<std::string>& ids) {
    for (const std::string& id : ids) {
        selection_.erase(id);
        defaults_.erase(id);
    }
}

bool TickedPlan::isTicked(const lumo::PlanEntry& entry) const {
    return !entry.skipReason && selection_.contains(entry.action.id);
}

bool TickedPlan::hasTicked() const {
    return std::ranges::any_of(whole_->entries(), [&](const auto* entry) { return isTicked(*entry); });
}

std::vector<lumo::CleanupAction> TickedPlan::selectedActions() const {
    std::vector<lumo::CleanupAction> actions;
    for (const lumo::PlanEntry* const entry : whole_->entries()) {
        if (isTicked(*entry)) {
            actions.push_back(entry->action);
        }
    }
    return actions;
}

CleanupShares TickedPlan::shares() const {
    CleanupShares shares;
    for (const lumo::PlanEntry* const entry : whole_->entries()) {
        if (isTicked(*entry)) {
            add(entry->action, shares);
        }
    }
    return shares;
}

} // namespace tarvo
