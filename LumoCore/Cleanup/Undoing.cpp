#include "LumoCore/Cleanup/Undoing.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Cleanup/HeldItem.h"
#include "LumoCore/Cleanup/HeldNotes.h"
#include "LumoCore/Cleanup/Holding.h"

#include <algorithm>
#include <map>
#include <ranges>
#include <set>

namespace lumo::Undoing {

namespace {

/// What one cleanup set aside.
struct LoggedBatch {
    std::string path;
    std::vector<TrashedItem> items; ///< Last set aside first.
};

/// All items of this home in the log, last set aside first, each once.
std::vector<TrashedItem> lastFirst(const std::vector<CleanupOutcome>& outcomes, const std::string& home) {
    std::vector<TrashedItem> items;
    std::set<std::string> known;
    for (const CleanupOutcome& outcome : outcomes | std::views::reverse) {
        if (!outcome.restorable) {
            continue;
        }
        for (const TrashedItem& item : *outcome.restorable | std::views::reverse) {
            std::optional<TrashedItem> ours = HeldItem::ofThisHome(item, home);
            if (ours && known.insert(ours->inTrash).second) {
                items.push_back(std::move(*ours));
            }
        }
    }
    return items;
}

/// The log, not the stamps, knows which cleanup came last: clocks are set back.
std::vector<LoggedBatch> newestFirst(const std::vector<CleanupOutcome>& outcomes, const std::string& home) {
    std::vector<LoggedBatch> batches;
    std::map<std::string, std::size_t, std::less<>> known;
    for (TrashedItem& item : lastFirst(outcomes, home)) {
        const std::string batch(Holding::batchOf(item.inTrash));
        const auto [entry, isNew] = known.emplace(batch, batches.size());
        if (isNew) {
            batches.push_back({.path = batch});
        }
        batches[entry->second].items.push_back(std::move(item));
    }
    return batches;
}

std::vector<TrashedItem> heldOf(const std::vector<TrashedItem>& items, const Holding::Contents& contents) {
    std::vector<TrashedItem> held;
    std::ranges::copy_if(items, std::back_inserter(held),
                         [&](const TrashedItem& item) { return contents.mayHold(item.inTrash); });
    return held;
}

/// Unless it is certain that it cannot: an attempt says why it fails.
bool canGoBack(const TrashedItem& item, const PathGuard& guard) {
    return !platform::kindOf(item.original) && !guard.refusal({item.original});
}

/// True for a batch whose time is over: whoever emptied it did what it was made for.
bool isPastItsDays(const LoggedBatch& batch, Date now) {
    const std::optional<Date> stamped = dateFromStampText(fileName(batch.path));
    return !stamped || Holding::Batch{.path = batch.path, .date = *stamped}.expires() <= now;
}

/// The items that nobody put back or ended, as far as is known. They are told, and noted as told.
std::vector<std::string> tellVanished(const LoggedBatch& batch, const Holding::Contents& contents,
                                      HeldNotes& notes) {
    std::vector<std::string> told;
    for (const TrashedItem& item : batch.items) {
        if (!contents.mayHold(item.inTrash) && !notes.hasEnded(item.inTrash) &&
            platform::isMissing(item.original)) {
            told.push_back(Holding::goneText(item));
            notes.end(HeldItem::placeInRoot(item.inTrash));
        }
    }
    return told;
}

/// Puts back what the batch still holds and tells what vanished from it.
void undoOne(const LoggedBatch& batch, const Holding::Contents& contents, const PathGuard& guard, Date now,
             TrashOperationResult& result) {
    if (!isPastItsDays(batch, now)) {
        HeldNotes notes = HeldNotes::of(guard.home());
        const std::vector<std::string> told = tellVanished(batch, contents, notes);
        notes.write();
        result.failures.insert(result.failures.end(), told.begin(), told.end());
    }
    const TrashOperationResult restored = Holding::restore(heldOf(batch.items, contents), guard);
    result.failures.insert(result.failures.end(), restored.failures.begin(), restored.failures.end());
    result.done += restored.done;
}

} // namespace

TrashOperationResult undo(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard, Date now) {
    TrashOperationResult result;
    const Holding::Contents contents(guard);
    for (const LoggedBatch& batch : newestFirst(outcomes, guard.home())) {
        undoOne(batch, contents, guard, now, result);
        if (result.done > 0) {
            break;
        }
    }
    return result;
}

TrashOperationResult undoBatch(std::string_view path, const std::vector<CleanupOutcome>& outcomes,
                               const PathGuard& guard, Date now) {
    TrashOperationResult result;
    const Holding::Contents contents(guard);
    for (const LoggedBatch& batch : newestFirst(outcomes, guard.home())) {
        if (batch.path == path) {
            undoOne(batch, contents, guard, now, result);
        }
    }
    return result;
}

std::vector<TrashedItem> newestBatch(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard) {
    const Holding::Contents contents(guard);
    for (const LoggedBatch& batch : newestFirst(outcomes, guard.home())) {
        std::vector<TrashedItem> items = heldOf(batch.items, contents);
        if (std::ranges::any_of(items, [&](const TrashedItem& item) { return canGoBack(item, guard); })) {
            return items;
        }
    }
    return {};
}

std::vector<TrashedItem> held(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard) {
    std::vector<TrashedItem> items = heldOf(lastFirst(outcomes, guard.home()), Holding::Contents(guard));
    std::ranges::reverse(items);
    return items;
}

std::optional<TrashedItem> newestFrom(const std::string& original,
                                      const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard) {
    const Holding::Contents contents(guard);
    for (TrashedItem& item : lastFirst(outcomes, guard.home())) {
        if (item.original == original && contents.mayHold(item.inTrash)) {
            return std::move(item);
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
