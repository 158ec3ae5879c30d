#include "TarvoModel/Showing/WholePlan.h"

#include "LumoCore/Basics/CheckedSum.h"

#include <algorithm>
#include <span>
#include <unordered_set>
#include <utility>
#include <variant>

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
    findHolders();
    reachable_ = sumOfTickable();
}

void WholePlan::findHolders() {
    std::unordered_map<std::string_view, const lumo::PlanEntry*> takers;
    for (const lumo::PlanEntry& entry : plan_->entries) {
        if (!std::holds_alternative<lumo::method::Command>(entry.action.method)) {
            for (const std::string& path : entry.action.measuredPaths) {
                takers.emplace(path, &entry);
            }
        }
    }
    const auto takerOf = [&takers](std::string_view path) -> const lumo::PlanEntry* {
        for (; !path.empty(); path = path.substr(0, path.rfind('/'))) {
            if (const auto found = takers.find(path); found != takers.end()) {
                return found->second;
            }
        }
        return nullptr;
    };
    for (const lumo::PlanEntry& item : items_->entries) {
        const std::vector<std::string>& paths = item.action.measuredPaths;
        const lumo::PlanEntry* const taker = paths.empty() ? nullptr : takerOf(paths.front());
        if (taker != nullptr &&
            std::ranges::all_of(paths, [&](const std::string& path) { return takerOf(path) == taker; })) {
            holders_.emplace(item.action.id, taker);
        }
    }
}

const lumo::PlanEntry* WholePlan::holder(std::string_view id) const {
    const auto found = holders_.find(id);
    return found == holders_.end() ? nullptr : found->second;
}

std::set<std::string> WholePlan::takenAlong(const std::set<std::string>& ids) const {
    std::set<std::string> along;
    for (const auto& [item, taker] : holders_) {
        if (ids.contains(taker->action.id)) {
            along.emplace(item);
        }
    }
    return along;
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
    for (const Row& row : rows_) {
        if (row.kind && !row.hasTile && !row.paths.empty()) {
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
    std::erase_if(rest->entries_,
                  [&](const lumo::PlanEntry* entry) { return ids.contains(entry->action.id); });
    for (const std::string& id : ids) {
        rest->byID_.erase(id);
        rest->holders_.erase(id);
    }
    rest->reachable_ = rest->sumOfTickable();
    return rest;
}

} // namespace tarvo
