#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "LumoCore/Cleanup/PathGuard.h"

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// The holding area, "Recently Cleaned": what cleanups took from the user stays there for some days and can
/// be put back. Batches are folders in it, one a cleanup. What ends a batch or an item for good first gives
/// it a name in the staging folder, so that nothing half removed can be put back. The home's lock must be
/// held for all that changes something.
namespace lumo::Holding {

inline constexpr int retentionDays = 7;

/// One cleanup's folder.
struct Batch {
    std::string path;
    Date date;              ///< From its name, or else when it last changed.
    std::int64_t bytes = 0; ///< Allocated.

    /// As many calendar days later, at the same time of day.
    [[nodiscard]] Date expires(int days = retentionDays) const;

    friend bool operator==(const Batch&, const Batch&) = default;
};

/// How an emptying ended.
struct Emptied {
    std::int64_t freed = 0;
    std::vector<std::string> failures;

    static constexpr auto fields =
        std::tuple{field("freed", &Emptied::freed), field("failures", &Emptied::failures)};
    friend bool operator==(const Emptied&, const Emptied&) = default;
};

/// home + "/Library/Application Support/TarvoAI/Apartado".
std::string root(const std::string& home);

/// The batch that a held item's path lies in.
std::string_view batchOf(std::string_view inTrash);

/// Where a cleanup that begins then puts what it sets aside. Nothing is made yet.
std::string newBatch(const std::string& home, Date now);

/// All batches with their sizes, oldest first; equal dates by name. None when there is no holding area; fails
/// when it is there and cannot be listed. `now` dates what has no date at all.
platform::SystemResult<std::vector<Batch>> batches(const PathGuard& guard, Date now);

/// Removes the batches for good. One that cannot be removed goes back to its place and has a failure text;
/// its items that lost something are marked, see HeldNotes.
Emptied empty(const std::vector<Batch>& batches, const PathGuard& guard);

/// The batches whose time is over.
std::vector<Batch> expired(const std::vector<Batch>& batches, Date now, int days = retentionDays);

/// Removes what has expired; the bytes freed. What cannot be removed is left and not counted.
std::int64_t purgeExpired(const PathGuard& guard, Date now, int days = retentionDays);

/// Removes all batches.
Emptied emptyAll(const PathGuard& guard, Date now);

/// Where an item is held, by the path that the log has for it, whichever way that spells the home. Everything
/// but a name in a batch of the holding area is as good as missing.
platform::SystemResult<platform::Place> heldPlace(const std::string& inTrash, const PathGuard& guard);

/// What is held, listed once: for whoever asks about many items.
class Contents final {
  public:
    explicit Contents(const PathGuard& guard);

    /// False when it is certain that the item of this home is not held: what cannot be looked at is worth an
    /// attempt that says why it fails.
    [[nodiscard]] bool mayHold(std::string_view inTrash) const;

  private:
    bool isListed_ = true;
    std::set<std::string, std::less<>> places_;   ///< "batch/name".
    std::set<std::string, std::less<>> unlisted_; ///< Batches.
};

/// "x: no longer in Recently Cleaned".
std::string goneText(const TrashedItem& item);

/// Puts items back where they were, one after the other. A taken place is never touched; a batch that is
/// empty then goes. One of which an emptying had removed a part already is done, and has a failure that says
/// so.
TrashOperationResult restore(const std::vector<TrashedItem>& items, const PathGuard& guard);

/// Deletes chosen items for good.
TrashOperationResult emptyTrashed(const std::vector<TrashedItem>& items, const PathGuard& guard);

/// True when an emptying that was cut short left something beside the holding root.
bool hasStagedInSupport(const std::string& home);

/// Sweeps what an emptying that was cut short left behind, and batches that hold nothing.
void sweep(const PathGuard& guard);

} // namespace lumo::Holding
