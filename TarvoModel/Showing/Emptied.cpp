#include "TarvoModel/Showing/Emptied.h"

#include "LumoCore/Basics/Path.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace tarvo {

namespace {

/// The ids of the rows that have nothing left where they were.
std::set<std::string> movedRows(const std::vector<lumo::CleanupOutcome>& outcomes,
                                const std::vector<Row>& rows) {
    std::unordered_set<std::string_view> moved;
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        if (outcome.restorable) {
            for (const lumo::TrashedItem& item : *outcome.restorable) {
                moved.insert(item.original);
            }
        }
    }
    const auto isMoved = [&](std::string_view path) {
        while (!path.empty() && !moved.contains(path)) {
            path = lumo::parentOf(path);
        }
        return !path.empty();
    };
    std::set<std::string> ids;
    for (const Row& row : rows) {
        if (!moved.empty() && !row.paths.empty() && std::ranges::all_of(row.paths, isMoved)) {
            ids.insert(row.id);
        }
    }
    return ids;
}

} // namespace

std::set<std::string> Emptied::take(const std::vector<lumo::CleanupOutcome>& outcomes,
                                    const std::vector<Row>& rows) {
    std::set<std::string> done = movedRows(outcomes, rows);
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        if (hasFreedNothing(outcome)) {
            fruitless_[outcome.id] = std::nullopt; // And it is still there.
        } else if (outcome.status == lumo::CleanupStatus::done) {
            done.insert(outcome.id);
            (outcome.restorable || outcome.trashedBytes > 0 ? setAside_ : deleted_).insert(outcome.id);
            fruitless_.erase(outcome.id);
        }
    }
    return done;
}

void Emptied::untickFruitless(const std::vector<lumo::PlanEntry>& entries, Selection& defaults) {
    for (const lumo::PlanEntry& entry : entries) {
        const auto known = fruitless_.find(entry.action.id);
        if (known == fruitless_.end()) {
            continue;
        }
        const std::int64_t bytes = entry.action.estimatedBytes;
        if (bytes >= known->second.value_or(bytes) + hardlyAnything) {
            fruitless_.erase(known);
        } else {
            known->second = known->second.value_or(bytes);
            defaults.erase(entry.action.id);
        }
    }
}

void Emptied::leaveOut(std::vector<lumo::PlanEntry>& entries, Selection& defaults, std::vector<Row>& rows) {
    for (const lumo::PlanEntry& entry : entries) {
        if (entry.action.estimatedBytes >= hardlyAnything) {
            deleted_.erase(entry.action.id);
            setAside_.erase(entry.action.id);
        }
    }
    untickFruitless(entries, defaults);
    const auto isEmpty = [&](const std::string& id) {
        return deleted_.contains(id) || setAside_.contains(id);
    };
    std::erase_if(entries, [&](const lumo::PlanEntry& entry) { return isEmpty(entry.action.id); });
    std::erase_if(defaults, isEmpty);
    std::erase_if(rows, [&](const Row& row) { return isEmpty(row.id); });
}

} // namespace tarvo
