#include "TarvoModel/Flows/HeldState.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HeldNotes.h"
#include "LumoCore/Cleanup/Recovery.h"
#include "LumoCore/Cleanup/Undoing.h"
#include "TarvoModel/Flows/Scanning.h"
#include "TarvoModel/Showing/CleanupTexts.h"

#include <algorithm>

namespace tarvo {

using lumo::CleanupOutcome;
using lumo::PathGuard;
using lumo::TrashedItem;
using lumo::Words;
using lumo::Holding::Batch;
using lumo::Holding::Emptied;
namespace Holding = lumo::Holding;

namespace {

lumo::Result<std::vector<Batch>> batchesOf(const PathGuard& guard, const Desk& desk) {
    auto batches = Holding::batches(guard, desk.now());
    if (!batches) {
        // Where the home is not to be seen, what is set aside in it is the least of what is missing.
        return lumo::failure(homeProblem(desk).value_or(unreadableHoldingText(batches.error())));
    }
    return std::move(*batches);
}

/// Ends those of the agreed batches that are still as they were; the others stay, each with a failure.
Emptied emptyUnchanged(const std::vector<Batch>& agreed, const std::vector<Batch>& now,
                       const PathGuard& guard) {
    std::vector<Batch> unchanged;
    std::vector<std::string> changed;
    for (const Batch& batch : agreed) {
        const auto found = std::ranges::find(now, batch.path, &Batch::path);
        if (found != now.end() && found->bytes == batch.bytes) {
            unchanged.push_back(batch);
        } else if (found != now.end()) {
            changed.push_back(
                Words{"{}: ha cambiado desde la pregunta", "{}: it has changed since the question"}.with(
                    lumo::fileName(batch.path)));
        }
    }
    Emptied emptied = Holding::empty(unchanged, guard);
    emptied.failures.insert(emptied.failures.end(), changed.begin(), changed.end());
    return emptied;
}

/// Ends under the lock what `choose` takes of the batches as they are then.
lumo::Result<Emptied> underLock(
    const Desk& desk,
    const std::function<lumo::Result<Emptied>(const std::vector<Batch>&, const PathGuard&, lumo::HomeLock&)>&
        act) {
    const PathGuard guard(desk.home);
    auto lock = lockHome(guard, desk);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const auto batches = batchesOf(guard, desk);
    return batches ? act(*batches, guard, *lock) : std::unexpected(batches.error());
}

} // namespace

lumo::Result<HeldState> heldState(const Desk& desk) {
    const PathGuard guard(desk.home);
    auto batches = batchesOf(guard, desk);
    if (!batches) {
        return std::unexpected(batches.error());
    }
    HeldState state{.batches = std::move(*batches)};
    if (state.batches.empty()) {
        return state;
    }
    const auto outcomes = history(desk);
    if (!outcomes) {
        state.historyProblem = outcomes.error().message;
        return state;
    }
    const lumo::HeldNotes notes = lumo::HeldNotes::of(desk.home);
    for (const TrashedItem& item : lumo::Undoing::held(*outcomes, guard)) {
        state.items.push_back({heldIDOf(item), item.original, std::string(Holding::batchOf(item.inTrash)),
                               notes.isIncomplete(item.inTrash)});
    }
    state.canUndo = !state.items.empty();
    return state;
}

std::optional<TrashedItem> heldItemNamed(const std::string& id, const std::vector<CleanupOutcome>& outcomes,
                                         const PathGuard& guard) {
    const std::vector<TrashedItem> held = lumo::Undoing::held(outcomes, guard);
    const auto found = std::ranges::find(held, id, heldIDOf);
    return found != held.end() && !id.empty() ? std::optional(*found) : std::nullopt;
}

lumo::Result<Emptied> emptyAgreed(const std::vector<Batch>& agreed, const Desk& desk) {
    return underLock(desk, [&](const std::vector<Batch>& now, const PathGuard& guard, lumo::HomeLock&) {
        return emptyUnchanged(agreed, now, guard);
    });
}

lumo::Result<Emptied> emptyAll(const Desk& desk) {
    return underLock(desk, [](const std::vector<Batch>& now, const PathGuard& guard, lumo::HomeLock&) {
        return Holding::empty(now, guard);
    });
}

lumo::Result<Expired> emptyExpired(const Desk& desk) {
    bool isPutOff = false;
    auto emptied =
        underLock(desk, [&](const std::vector<Batch>& now, const PathGuard& guard, lumo::HomeLock& lock) {
            isPutOff = !lock.mayPurge(desk.now(), std::chrono::seconds(0));
            return isPutOff ? Emptied() : Holding::empty(Holding::expired(now, desk.now()), guard);
        });
    if (!emptied) {
        return std::unexpected(emptied.error());
    }
    return Expired{.emptied = std::move(*emptied), .isPutOff = isPutOff};
}

std::int64_t purgeExpired(const Desk& desk, std::chrono::seconds clockDrift) {
    const PathGuard guard(desk.home);
    if (!lumo::Recovery::mayHaveWork(desk.home)) {
        return 0;
    }
    auto lock = lockHomeAtOnce(guard, desk);
    return lock && lock->mayPurge(desk.now(), clockDrift) ? Holding::purgeExpired(guard, desk.now()) : 0;
}

} // namespace tarvo
