#include "LumoCore/Cleanup/Undoing.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/Holding.h"

#include <algorithm>
#include <ranges>

namespace lumo::Undoing {

namespace {

/// True unless it is certain that nothing stands there: what cannot be looked at is worth an attempt that
/// says why it fails.
bool isHeld(const TrashedItem& item) {
    return !platform::isMissing(item.inTrash);
}

} // namespace

std::vector<TrashedItem> newestBatch(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard) {
    std::optional<std::string> batch;
    std::vector<TrashedItem> items;
    // The log, not the stamps, knows which cleanup came last: clocks are set back.
    for (const CleanupOutcome& outcome : outcomes | std::views::reverse) {
        if (!outcome.restorable) {
            continue;
        }
        for (const TrashedItem& item : *outcome.restorable | std::views::reverse) {
            const bool isCandidate = batch ? Holding::batchOf(item.inTrash) == *batch
                                           : isInside(item.inTrash, Holding::root(guard.home()));
            if (isCandidate && isHeld(item)) {
                batch = Holding::batchOf(item.inTrash);
                items.push_back(item);
            }
        }
    }
    return items;
}

std::optional<TrashedItem> newestFrom(const std::string& original,
                                      const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard) {
    for (const CleanupOutcome& outcome : outcomes | std::views::reverse) {
        if (!outcome.restorable) {
            continue;
        }
        for (const TrashedItem& item : *outcome.restorable | std::views::reverse) {
            if (item.original == original && isInside(item.inTrash, Holding::root(guard.home())) &&
                isHeld(item)) {
                return item;
            }
        }
    }
    return std::nullopt;
}

LastBatch lastBatchInTrash(const std::vector<CleanupOutcome>& outcomes, std::chrono::seconds window) {
    std::optional<Date> latest;
    for (const CleanupOutcome& outcome : outcomes) {
        if (outcome.restorable && !outcome.restorable->empty()) {
            latest = latest ? std::max(*latest, outcome.date) : outcome.date;
        }
    }
    LastBatch last;
    for (const CleanupOutcome& outcome : outcomes) {
        if (outcome.restorable && !outcome.restorable->empty() && *latest - outcome.date <= window) {
            last.items.insert(last.items.end(), outcome.restorable->begin(), outcome.restorable->end());
            last.bytes = saturatedSum(last.bytes, outcome.trashedBytes);
        }
    }
    return last;
}

} // namespace lumo::Undoing
