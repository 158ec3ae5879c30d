#include "LumoCore/Cleanup/Holding.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/UniqueID.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/HeldItem.h"
#include "LumoCore/Cleanup/HeldNotes.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/Removal.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>

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

/// A link in place of one of our own folders counts as missing.
bool isAsGoodAsMissing(const SystemError& error) {
    return error.isMissing() || error.code == ELOOP;
}

SystemResult<BaseFolder> openHolding(const PathGuard& guard) {
    return guard.base() ? ApplicationFolders::openHolding(*guard.base())
                        : std::unexpected(SystemError{EXDEV});
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

/// What the items of a batch weigh, or the one item, each by itself.
using Weights = std::map<std::string, Usage>;

Usage weightOf(const std::string& path) {
    HardLinkRegistry registry;
    return FileTree::measure(path, registry);
}

/// `note` is what the notes call that which stands at the place: a batch, or an item in one.
Weights weigh(const Place& place, const std::string& note) {
    if (note.find('/') != std::string::npos) {
        return {{note, weightOf(place.path())}};
    }
    Weights weights;
    const SystemResult<BaseFolder> batch = BaseFolder::openAt(place);
    for (const std::string& name :
         batch ? batch->names().value_or(std::vector<std::string>()) : std::vector<std::string>()) {
        weights[joined(note, name)] = weightOf(joined(place.path(), name));
    }
    return weights;
}

/// Marks what is left of the items and weighs less than before.
void markIncomplete(const Weights& before, const Weights& left, HeldNotes& notes) {
    for (const auto& [note, weight] : left) {
        const auto known = before.find(note);
        if (known != before.end() && (weight.allocatedBytes < known->second.allocatedBytes ||
                                      weight.fileCount < known->second.fileCount)) {
            notes.markIncomplete(note);
        }
    }
}

/// Removes for good. What cannot be removed goes back to its place, and is marked before that: nobody finds
/// a part of an item there and takes it for the whole.
SystemResult<void> removeThroughStaging(const Place& item, const std::string& note, const BaseFolder& home,
                                        HeldNotes& notes) {
    const Weights before = weigh(item, note);
    const SystemResult<Place> staged = stage(item, home);
    if (!staged) {
        return std::unexpected(staged.error());
    }
    const SystemResult<void> removed = platform::removeTree(*staged);
    if (!removed) {
        markIncomplete(before, weigh(*staged, note), notes);
        notes.write();
        (void)platform::moveWithoutReplacing(*staged, item);
    }
    return removed;
}

/// Removes an item's batch if nothing is left in it; true when it is gone by that.
bool removeIfEmpty(std::string_view batch, const PathGuard& guard) {
    const SystemResult<BaseFolder> holding = openHolding(guard);
    const SystemResult<Place> place =
        holding ? holding->placeWithoutLinks(fileName(batch)) : std::unexpected(holding.error());
    return place && platform::removeEmptyFolder(*place);
}

std::string incompleteText(const TrashedItem& item) {
    return std::string(fileName(item.original)) +
           Words{": le faltan partes, que se borraron al vaciar lo apartado",
                 ": parts of it are gone, deleted when Recently Cleaned was emptied"}
               .in();
}

std::string takenText(const TrashedItem& item) {
    return std::string(fileName(item.original)) + ": ya existe en su sitio"; // In both languages.
}

/// Why the item could not be put back; absent when it was.
std::optional<std::string> restoreOne(const TrashedItem& item, const PathGuard& guard) {
    const SystemResult<Place> held = heldPlace(item.inTrash, guard);
    if (!isSpeltOut(item.original) || (!held && isAsGoodAsMissing(held.error()))) {
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

SystemResult<Place> heldPlace(const std::string& inTrash, const PathGuard& guard) {
    const std::optional<TrashedItem> ours =
        HeldItem::ofThisHome({.original = {}, .inTrash = inTrash}, guard.home());
    if (!ours) {
        return std::unexpected(SystemError{ENOENT});
    }
    const SystemResult<BaseFolder> holding = openHolding(guard);
    SystemResult<Place> place = holding ? holding->placeWithoutLinks(HeldItem::placeInRoot(ours->inTrash))
                                        : std::unexpected(holding.error());
    const SystemResult<EntryKind> kind = place ? platform::kindAt(*place) : std::unexpected(place.error());
    return kind ? std::move(place) : std::unexpected(kind.error());
}

Contents::Contents(const PathGuard& guard) {
    const SystemResult<BaseFolder> holding = openHolding(guard);
    const SystemResult<std::vector<std::string>> batches =
        holding ? holding->names() : std::unexpected(holding.error());
    isListed_ = batches || isAsGoodAsMissing(batches.error());
    for (const std::string& batch : batches.value_or(std::vector<std::string>())) {
        const SystemResult<Place> place = holding->placeWithoutLinks(batch);
        const SystemResult<BaseFolder> folder =
            place ? BaseFolder::openAt(*place) : std::unexpected(place.error());
        const SystemResult<std::vector<std::string>> names =
            folder ? folder->names() : std::unexpected(folder.error());
        if (!names && !isAsGoodAsMissing(names.error())) {
            unlisted_.insert(batch);
        }
        for (const std::string& name : names.value_or(std::vector<std::string>())) {
            places_.insert(joined(batch, name));
        }
    }
}

bool Contents::mayHold(std::string_view inTrash) const {
    const std::string_view place = HeldItem::placeInRoot(inTrash);
    return !place.empty() && (!isListed_ || places_.contains(place) || unlisted_.contains(parentOf(place)));
}

std::string goneText(const TrashedItem& item) {
    return std::string(fileName(item.original)) +
           Words{": ya no está apartado", ": no longer in Recently Cleaned"}.in();
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
        return isAsGoodAsMissing(listed.error()) ? SystemResult<std::vector<Batch>>()
                                                 : std::unexpected(listed.error());
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
    HeldNotes notes = HeldNotes::of(guard.home());
    for (const Batch& batch : batches) {
        notes.end(fileName(batch.path));
    }
    // Beforehand: what a process that dies now has staged is never held again.
    notes.write();
    for (const Batch& batch : batches) {
        const std::string name(fileName(batch.path));
        const SystemResult<Place> place =
            holding ? holding->placeWithoutLinks(name) : std::unexpected(holding.error());
        const SystemResult<void> removed =
            place ? removeThroughStaging(*place, name, *guard.base(), notes) : std::unexpected(place.error());
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
    HeldNotes notes = HeldNotes::of(guard.home());
    for (const TrashedItem& logged : items) {
        const TrashedItem item = HeldItem::ofThisHome(logged, guard.home()).value_or(logged);
        if (std::optional<std::string> problem = restoreOne(item, guard)) {
            result.failures.push_back(std::move(*problem));
            continue;
        }
        ++result.done;
        notes.putBack(HeldItem::placeInRoot(item.inTrash));
        (void)removeIfEmpty(batchOf(item.inTrash), guard);
        if (notes.isIncomplete(item.inTrash)) {
            result.failures.push_back(incompleteText(item));
        }
    }
    notes.write();
    return result;
}

TrashOperationResult emptyTrashed(const std::vector<TrashedItem>& items, const PathGuard& guard) {
    TrashOperationResult result;
    HeldNotes notes = HeldNotes::of(guard.home());
    for (const TrashedItem& logged : items) {
        const std::string name(fileName(logged.original));
        const std::optional<TrashedItem> item = HeldItem::ofThisHome(logged, guard.home());
        if (!item) {
            result.failures.push_back(name + Words{": no está apartado", ": not in Recently Cleaned"}.in());
            continue;
        }
        const std::string note(HeldItem::placeInRoot(item->inTrash));
        const SystemResult<Place> held = heldPlace(item->inTrash, guard);
        const SystemResult<void> removed =
            held ? removeThroughStaging(*held, note, *guard.base(), notes) : std::unexpected(held.error());
        if (removed) {
            ++result.done;
            // The item and never its whole batch: of another one in it nobody may know that it vanished.
            notes.end(note);
            (void)removeIfEmpty(batchOf(item->inTrash), guard);
        } else if (!isAsGoodAsMissing(removed.error())) {
            result.failures.push_back(withReason(name, removed.error()));
        }
    }
    notes.write();
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

bool hasStagedInSupport(const std::string& home) {
    return std::ranges::any_of(platform::namesIn(OwnFiles::support(home)),
                               [](const std::string& name) { return name.starts_with(stagedInSupport); });
}

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
