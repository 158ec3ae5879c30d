#include "TarvoModel/Showing/Emptied.h"

#include <algorithm>

namespace tarvo {

std::set<std::string> Emptied::take(const std::vector<lumo::CleanupOutcome>& outcomes) {
    std::set<std::string> done;
    for (const lumo::CleanupOutcome& outcome : outcomes) {
        if (outcome.status == lumo::CleanupStatus::done) {
            done.insert(outcome.id);
            (outcome.restorable || outcome.trashedBytes > 0 ? setAside_ : deleted_).insert(outcome.id);
        }
    }
    return done;
}

void Emptied::leaveOut(std::vector<lumo::PlanEntry>& entries, Selection& defaults, std::vector<Row>& rows) {
    for (const lumo::PlanEntry& entry : entries) {
        if (entry.action.estimatedBytes >= hardlyAnything) {
            deleted_.erase(entry.action.id);
            setAside_.erase(entry.action.id);
        }
    }
    const auto isEmpty = [&](const std::string& id) {
        return deleted_.contains(id) || setAside_.contains(id);
    };
    std::erase_if(entries, [&](const lumo::PlanEntry& entry) { return isEmpty(entry.action.id); });
    std::erase_if(defaults, isEmpty);
    std::erase_if(rows, [&](const Row& row) { return isEmpty(row.id); });
}

} // namespace tarvo
