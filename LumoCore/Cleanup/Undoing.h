#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Finds in the cleanup log what can still be put back. Nothing but the log says where an item belongs.
namespace lumo::Undoing {

/// Puts back what the newest cleanup set aside of which something can be put back. Batches on the way there
/// do not hold it up: each of their items that cannot go back has its failure, as those of the batch itself.
/// So has, once, an item that is neither held nor in its place and was neither put back before nor ended for
/// good: it vanished. With nothing to put back and nothing to tell the result is the zero value. The home's
/// lock must be held.
TrashOperationResult undo(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard, Date now);

/// The same of one batch, by its path, and of no other, whatever comes of it.
TrashOperationResult undoBatch(std::string_view path, const std::vector<CleanupOutcome>& outcomes,
                               const PathGuard& guard, Date now);

/// What `undo` would put back now, for showing: all that the batch still has, last set aside first, since
/// that may be the folder in which an earlier item belongs. Empty when nothing can be put back.
std::vector<TrashedItem> newestBatch(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard);

/// All items that are still held, in the order of the log, as the home in hand spells them.
std::vector<TrashedItem> held(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard);

/// The item that was last set aside from that path, as the home in hand spells it, and is still held.
std::optional<TrashedItem> newestFrom(const std::string& original,
                                      const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard);

/// What the most recent cleanup set aside.
struct LastBatch {
    std::vector<TrashedItem> items; ///< In the order of the log.
    std::int64_t bytes = 0;
};

/// The restorable items of the outcomes dated at most that long before the latest one that has any, whether
/// they are still held or not.
LastBatch lastBatchInTrash(const std::vector<CleanupOutcome>& outcomes, std::chrono::seconds window);

} // namespace lumo::Undoing
