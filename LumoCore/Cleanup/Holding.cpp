#include "LumoCore/Cleanup/Holding.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Removal.h"

#include <algorithm>
#include <cerrno>
#include <functional>

namespace lumo::Holding {

using platform::BaseFolder;
using platform::EntryKind;
using platform::Place;
using platform::SystemError;
using platform::SystemResult;

namespace {

constexpr std::string_view stagedInSupport = "vaciando-";

std::string withReason(std::string_view name, const SystemError& error) {
    return std::string(name) + ": " + reasonText(error);
}

SystemResult<BaseFolder> openHolding(const PathGuard& guard) {
    return guard.base() ? ApplicationFolders::openHolding(*guard.base())
                        : std::unexpected(SystemError{EXDEV});
}

/// An item in a batch, known by the path that the log has for it. Only such paths count: the root and two
/// plain names. Everything else is as good as gone.
SystemResult<Place> heldPlace(const std::string& path, const PathGuard& guard) {
    constexpr SystemError gone{ENOENT};
    const std::string beginning = root(guard.home()) + "/";
    if (!path.starts_with(beginning)) {
        return std::unexpected(gone);
    }
    const std::string_view inRoot = std::string_view(path).substr(beginning.size());
    const std::size_t slash = inRoot.find('/');
    if (slash == std::string_view::npos || inRoot.find('/', slash + 1) != std::string_view::npos) {
        return std::unexpected(gone);
    }
    const SystemResult<BaseFolder> holding = openHolding(guard);
    SystemResult<Place> place =
        holding ? holding->placeWithoutLinks(inRoot) : std::unexpected(holding.error());
    const SystemResult<EntryKind> kind = place ? platform::kindAt(*place) : std::unexpected(place.error());
    if (!kind) {
        return std::unexpected(kind.error().code == EINVAL || kind.error().code == ELOOP ? gone
                                                                                         : kind.error());
    }
    return place;
}

/// Where things go that are to be removed. The usual place may lie on another volume, or be impossible to
/// make on a full disk; then a name beside the holding root serves, which takes no space.
std::vector<std::function<SystemResult<Place>()>> stagingPlaces(const BaseFolder& home) {
    return {[&home]() -> SystemResult<Place> {
                const auto staging = ApplicationFolders::makeStaging(home);
                return staging ? staging->placeWithoutLinks(uniqueID()) : std::unexpected(staging.error());
            },
            [&home]() -> SystemResult<Place> {
                const auto support = ApplicationFolders::openSupport(home);
                return support ? support->placeWithoutLinks(std::string(stagedInSupport) + uniqueID())
                               : std::unexpected(support.error());
            }};
}

SystemResult<Place> stage(const Place& item, const BaseFolder& home) {
    SystemError problem;
    for (const auto& choose : stagingPlaces(home)) {
        SystemResult<Place> staged = choose();
        const SystemResult<void> moved =
            staged ? platform::moveWithoutReplacing(item, *staged) : std::unexpected(staged.error());
        if (moved) {
            return staged;
        }
        problem = moved.error();
    }
    return std::unexpected(problem);
}

/// Removes for good. What cannot be removed goes back to its place.
SystemResult<void> removeThroughStaging(const Place& item, const BaseFolder& home) {
    const SystemResult<Place> staged = stage(item, home);
    if (!staged) {
        return std::unexpected(staged.error());
    }
    const SystemResult<void> removed = platform::removeTree(*staged);
    if (!removed) {
        (void)platform::moveWithoutReplacing(*staged, item);
    }
    return removed;
}

/// Removes an item's batch if nothing is left in it.
void removeIfEmpty(std::string_view batch, const PathGuard& guard) {
    const SystemResult<BaseFolder> holding = openHolding(guard);
    const SystemResult<Place> place =
        holding ? holding->placeWithoutLinks(fileName(batch)) : std::unexpected(holding.error());
    if (place) {
        (void)platform::removeEmptyFolder(*place);
    }
}

std::string goneText(const TrashedItem& item) {
    return std::string(fileName(item.original)) +
           Words{": ya no está apartado", ": no longer in Recently Cleaned"}.in();
}

std::string takenText(const TrashedItem& item) {
    return std::string(fileName(item.original)) + ": ya existe en su sitio"; // In both languages.
}

/// Why the item could not be put back; absent when it was.
std::optional<std::string> restoreOne(const TrashedItem& item, const PathGuard& guard) {
    const SystemResult<Place> held = heldPlace(item.inTrash, guard);
    if (!isSpeltOut(item.original) || (!held && held.error().isMissing())) {
        return goneText(item);
    }
    if (!held) {
        return withReason(fileName(item.original), held.error());
    }
    if (std::optional<std::string> refusal = guard.refusal({item.original})) {
        return std::string(fileName(item.original)) + ": " + *refusal;
    }
    const SystemResult<Place> original = guard.placeWithFolders(item.original);
    const SystemResult<void> moved =
        original ? platform::moveWithoutReplacing(*held, *original) : std::unexpected(original.error());
    if (moved) {
        removeIfEmpty(batchOf(item.inTrash), guard);
        return std::nullopt;
    }
    return moved.error().code == EEXIST ? takenText(item)
                                        : withReason(fileName(item.original), moved.error());
}

} // namespace

std::string root(const std::string& home) {
    return OwnFiles::holding(home);
}

std::string_view batchOf(std::string_view inTrash) {
    return parentOf(inTrash);
}

std::string newBatch(const std::string& home, Date now) {
    return root(home) + "/" + stampText(now);
}

Date Batch::expires(int days) const {
    return daysLater(date, days);
}

SystemResult<std::vector<Batch>> batches(const PathGuard& guard, Date now) {
    const SystemResult<BaseFolder> holding = openHolding(guard);
    const SystemResult<std::vector<std::string>> listed =
        holding ? holding->names() : std::unexpected(holding.error());
    if (!listed) {
        // A link in its place counts as missing.
        const bool isMissing = listed.error().isMissing() || listed.error().code == ELOOP;
        return isMissing ? SystemResult<std::vector<Batch>>() : std::unexpected(listed.error());
    }
    std::vector<Batch> batches;
    for (const std::string& name : *listed) {
        Batch batch{.path = root(guard.home()) + "/" + name};
        const std::optional<Date> stamped = dateFromStampText(name);
        batch.date = stamped ? *stamped : platform::modificationDate(batch.path).value_or(now);
        HardLinkRegistry registry;
        batch.bytes = FileTree::measure(batch.path, registry).allocatedBytes;
        batches.push_back(std::move(batch));
    }
    std::ranges::sort(batches, [](const Batch& left, const Batch& right) {
        return left.date != right.date ? left.date < right.date : left.path < right.path;
    });
    return batches;
}

Emptied empty(const std::vector<Batch>& batches, const PathGuard& guard) {
    Emptied emptied;
    const SystemResult<BaseFolder> holding = openHolding(guard);
    for (const Batch& batch : batches) {
        const SystemResult<Place> place =
            holding ? holding->placeWithoutLinks(fileName(batch.path)) : std::unexpected(holding.error());
        const SystemResult<void> removed =
            place ? removeThroughStaging(*place, *guard.base()) : std::unexpected(place.error());
        if (removed) {
            emptied.freed = checkedSum(emptied.freed, batch.bytes);
        } else if (!removed.error().isMissing()) {
            emptied.failures.push_back(withReason(fileName(batch.path), removed.error()));
        }
    }
    return emptied;
}

std::vector<Batch> expired(const std::vector<Batch>& batches, Date now, int days) {
    std::vector<Batch> over;
    std::ranges::copy_if(batches, std::back_inserter(over),
                         [&](const Batch& batch) { return batch.expires(days) <= now; });
    return over;
}

std::int64_t purgeExpired(const PathGuard& guard, Date now, int days) {
    const SystemResult<std::vector<Batch>> held = batches(guard, now);
    return held ? empty(expired(*held, now, days), guard).freed : 0;
}

Emptied emptyAll(const PathGuard& guard, Date now) {
    const SystemResult<std::vector<Batch>> held = batches(guard, now);
    if (!held) {
        return {.freed = 0, .failures = {withReason(fileName(root(guard.home())), held.error())}};
    }
    return empty(*held, guard);
}

TrashOperationResult restore(const std::vector<TrashedItem>& items, const PathGuard& guard) {
    TrashOperationResult result;
    for (const TrashedItem& item : items) {
        if (std::optional<std::string> problem = restoreOne(item, guard)) {
            result.failures.push_back(std::move(*problem));
        } else {
            ++result.done;
        }
    }
    return result;
}

TrashOperationResult emptyTrashed(const std::vector<TrashedItem>& items, const PathGuard& guard) {
    TrashOperationResult result;
    for (const TrashedItem& item : items) {
        const std::string name(fileName(item.original));
        if (!isInside(item.inTrash, root(guard.home())) || !isSpeltOut(item.inTrash)) {
            result.failures.push_back(name + Words{": no está apartado", ": not in Recently Cleaned"}.in());
            continue;
        }
        const SystemResult<Place> held = heldPlace(item.inTrash, guard);
        const SystemResult<void> removed =
            held ? removeThroughStaging(*held, *guard.base()) : std::unexpected(held.error());
        if (removed) {
            ++result.done;
            removeIfEmpty(batchOf(item.inTrash), guard);
        } else if (!removed.error().isMissing()) {
            result.failures.push_back(withReason(name, removed.error()));
        }
    }
    return result;
}

namespace {

/// Removes everything in the folder whose name is one that staging gives.
void sweepStaged(const SystemResult<BaseFolder>& folder, std::string_view prefix) {
    if (!folder) {
        return;
    }
    for (const std::string& name : folder->names().value_or(std::vector<std::string>())) {
        if (!name.starts_with(prefix) || !isUniqueID(std::string_view(name).substr(prefix.size()))) {
            continue;
        }
        if (const SystemResult<Place> place = folder->placeWithoutLinks(name)) {
            (void)platform::removeTree(*place);
        }
    }
}

} // namespace

void sweep(const PathGuard& guard) {
    if (!guard.base()) {
        return;
    }
    sweepStaged(ApplicationFolders::openStaging(*guard.base()), "");
    sweepStaged(ApplicationFolders::openSupport(*guard.base()), stagedInSupport);
    if (const SystemResult<BaseFolder> holding = openHolding(guard)) {
        for (const std::string& name : holding->names().value_or(std::vector<std::string>())) {
            removeIfEmpty(name, guard);
        }
    }
}

} // namespace lumo::Holding
