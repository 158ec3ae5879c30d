#pragma once

#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Finds in the cleanup log what can still be put back. Nothing but the log says where an item belongs.
namespace lumo::Undoing {

/// What the newest cleanup that set something aside still has in its batch, last set aside first: that may be
/// the folder in which an earlier item belongs. Empty when nothing is held.
std::vector<TrashedItem> newestBatch(const std::vector<CleanupOutcome>& outcomes, const PathGuard& guard);

/// The item that was last set aside from exactly that path and is still held.
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
