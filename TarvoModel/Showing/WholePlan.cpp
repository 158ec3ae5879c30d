#include "TarvoModel/Showing/WholePlan.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <span>
#include <unordered_set>
#include <utility>

namespace tarvo {

WholePlan::WholePlan(std::shared_ptr<const ShownPlan> plan, std::shared_ptr<const ShownItems> items,
                     const std::string& home)
    : plan_(std::move(plan)), items_(items ? std::move(items) : std::make_shared<const ShownItems>()) {
    for (const auto* const part : {&plan_->entries, &items_->entries}) {
        for (const lumo::PlanEntry& entry : *part) {
            entries_.push_back(&entry);
            byID_.emplace(entry.action.id, &entry);
        }
    }
    rows_.reserve(plan_->rows.size() + items_->rows.size());
    rows_ = plan_->rows;
    rows_.insert(rows_.end(), items_->rows.begin(), items_->rows.end());
    const std::span<Row> all(rows_);
    giveTiles(all.subspan(plan_->rows.size()), all.first(plan_->rows.size()), home);
    reachable_ = sumOfTickable();
}

std::shared_ptr<const WholePlan> WholePlan::of(ShownPlan plan) {
    return std::make_shared<const WholePlan>(std::make_shared<const ShownPlan>(std::move(plan)), nullptr,
                                             std::string());
}

const lumo::PlanEntry* WholePlan::entry(std::string_view id) const {
    const auto found = byID_.find(id);
    return found == byID_.end() ? nullptr : found->second;
}

std::int64_t WholePlan::sumOfTickable() const {
    // What another row stands for is reached by that.
    std::unordered_set<std::string_view> covered;
    for (const Row& row : std::span(rows_).subspan(plan_->rows.size())) {
        if (!row.hasTile && !row.paths.empty()) {
            covered.insert(row.id);
        }
    }
    std::int64_t sum = 0;
    for (const lumo::PlanEntry* const entry : entries_) {
        if (!entry->skipReason && !covered.contains(entry->action.id)) {
            sum = lumo::checkedSum(sum, entry->action.estimatedBytes);
        }
    }
    return sum;
}

std::shared_ptr<const WholePlan> WholePlan::without(const std::set<std::string>& ids) const {
    auto rest = std::make_shared<WholePlan>(*this);
    std::erase_if(rest->rows_, [&](const Row& row) { return ids.contains(row.id); });
    return rest;
}

} // namespace tarvo
